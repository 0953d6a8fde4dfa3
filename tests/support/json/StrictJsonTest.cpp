#include "support/json/StrictJson.h"

#include <gtest/gtest.h>

namespace vorq::strict_json {
namespace {

template<typename Value>
std::optional<Value> readAs(QByteArrayView json) {
    return decodeDocument<Value>(json);
}

TEST(StrictJson, ReadsIdentitiesInEitherCase) {
    const QUuid id("2F564652-466D-E486-522C-4F8D6102DD70");
    EXPECT_EQ(readAs<QUuid>(R"("2F564652-466D-E486-522C-4F8D6102DD70")"), id);
    EXPECT_EQ(readAs<QUuid>(R"("2f564652-466d-e486-522c-4f8d6102dd70")"), id);
    EXPECT_EQ(readAs<QUuid>(R"("00000000-0000-0000-0000-000000000000")"), QUuid());
}

TEST(StrictJson, TakesNoOtherFormOfAnIdentity) {
    for (const char* json :
         {R"("{2F564652-466D-E486-522C-4F8D6102DD70}")", R"("2F564652466DE486522C4F8D6102DD70")",
          R"("2F564652-466D-E486-522C-4F8D6102DD7g")", R"("2F564652-466D-E486-522C-4F8D6102DD700")",
          R"("")", "1"})
        EXPECT_EQ(readAs<QUuid>(json), std::nullopt) << json;
}

TEST(StrictJson, ReadsBytesFromBase64) {
    EXPECT_EQ(readAs<QByteArray>(R"("e1xydGYxIHh9")"), "{\\rtf1 x}");
    EXPECT_EQ(readAs<QByteArray>(R"("eA==")"), "x");
    EXPECT_EQ(readAs<QByteArray>(R"("")"), "");
    for (const char* json : {R"("eA")", R"("e A=")", R"("e-_=")", "1"})
        EXPECT_EQ(readAs<QByteArray>(json), std::nullopt) << json;
}

TEST(StrictJson, ReadsNumbersOfAnyForm) {
    EXPECT_EQ(readAs<double>("160"), 160.0);
    EXPECT_EQ(readAs<double>("-2.5"), -2.5);
    EXPECT_EQ(readAs<double>(R"("1")"), std::nullopt);
    EXPECT_EQ(readAs<double>("1e999"), std::nullopt);
}

} // namespace
} // namespace vorq::strict_json
