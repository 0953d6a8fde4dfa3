#include "support/RecordTable.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

struct Plant {
    QString name;
    int height = 0;
};

enum PlantRole { NameRole = Qt::UserRole + 1, HeightRole };

constexpr auto plantRoles = recordTable<Plant>(
    NameRole,
    {{NameRole, "name", [](const Plant& plant) -> QVariant { return plant.name; }},
     {HeightRole, "height", [](const Plant& plant) -> QVariant { return plant.height; }}});

TEST(RecordTable, ReadsARecordByRole) {
    const Plant fern{"Fern", 40};
    EXPECT_EQ(plantRoles.value(fern, NameRole), "Fern");
    EXPECT_EQ(plantRoles.value(fern, HeightRole), 40);
    EXPECT_EQ(plantRoles.value(fern, Qt::DisplayRole), "Fern");
    EXPECT_FALSE(plantRoles.value(fern, Qt::DecorationRole).isValid());
}

TEST(RecordTable, NamesItsRoles) {
    const QHash<int, QByteArray> expected{{NameRole, "name"}, {HeightRole, "height"}};
    EXPECT_EQ(plantRoles.roleNames(), expected);
}

TEST(RecordTable, TellsTheRolesThatReadDifferently) {
    EXPECT_THAT(plantRoles.changedRoles({"Fern", 40}, {"Fern", 41}),
                testing::ElementsAre(HeightRole));
    EXPECT_THAT(plantRoles.changedRoles({"Fern", 40}, {"Fern", 40}), testing::IsEmpty());
}

} // namespace
} // namespace vorq
