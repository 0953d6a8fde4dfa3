#include "platform/linux/desktop/SessionKind.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

QProcessEnvironment environment(std::initializer_list<std::pair<const char*, const char*>> all) {
    QProcessEnvironment made;
    for (const auto& [name, value] : all)
        made.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    return made;
}

TEST(SessionKindTest, IsWaylandWhereACompositorIsNamed) {
    EXPECT_EQ(sessionKind(environment({{"WAYLAND_DISPLAY", "wayland-0"}})), SessionKind::Wayland);
    EXPECT_EQ(sessionKind(environment({{"XDG_SESSION_TYPE", "wayland"}, {"DISPLAY", ":0"}})),
              SessionKind::Wayland);
}

TEST(SessionKindTest, IsX11WhereOnlyAnXServerIsNamed) {
    EXPECT_EQ(sessionKind(environment({{"DISPLAY", ":0"}})), SessionKind::X11);
    EXPECT_EQ(sessionKind(environment({{"XDG_SESSION_TYPE", "x11"}, {"WAYLAND_DISPLAY", ""}})),
              SessionKind::X11);
}

TEST(SessionKindTest, IsNoneInATerminalOrService) {
    EXPECT_EQ(sessionKind(environment({})), SessionKind::None);
    EXPECT_EQ(sessionKind(environment({{"XDG_SESSION_TYPE", "tty"}, {"DISPLAY", ""}})),
              SessionKind::None);
}

TEST(XServerChoiceTest, IsMadeInAWaylandSessionWhoseXServerAnswers) {
    const auto wayland = environment({{"WAYLAND_DISPLAY", "wayland-0"}});
    EXPECT_TRUE(prefersXServer(wayland, true));
    EXPECT_FALSE(prefersXServer(wayland, false));
    EXPECT_FALSE(prefersXServer(environment({{"DISPLAY", ":0"}}), true));
}

TEST(XServerChoiceTest, IsTheUsersWhereTheyMadeIt) {
    const auto chosen =
        environment({{"WAYLAND_DISPLAY", "wayland-0"}, {"QT_QPA_PLATFORM", "wayland"}});
    EXPECT_FALSE(prefersXServer(chosen, true));
}

} // namespace
} // namespace vorq
