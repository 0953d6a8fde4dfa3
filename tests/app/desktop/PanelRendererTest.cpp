#include "app/desktop/PanelRenderer.h"

#include <QProcessEnvironment>

#include <gmock/gmock.h>

namespace vorq {
namespace {

QProcessEnvironment with(const QString& name, const QString& value) {
    QProcessEnvironment environment;
    environment.insert(name, value);
    return environment;
}

TEST(PanelRenderer, AGraphicsProcessorIsUsed) {
    EXPECT_FALSE(wantsSoftwareRenderer({}, true));
}

TEST(PanelRenderer, WithoutOneTheProcessorDraws) {
    EXPECT_TRUE(wantsSoftwareRenderer({}, false));
}

TEST(PanelRenderer, OneThatMesaIsToldToLeaveAloneIsNotUsed) {
    for (const char* yes : {"1", "true", "TRUE", "yes", "y"})
        EXPECT_TRUE(wantsSoftwareRenderer(with("LIBGL_ALWAYS_SOFTWARE", yes), true)) << yes;
    for (const char* no : {"", "0", "false", "no", "n", "2"})
        EXPECT_FALSE(wantsSoftwareRenderer(with("LIBGL_ALWAYS_SOFTWARE", no), true)) << no;
}

TEST(PanelRenderer, WhatTheUserHasSetComesFirst) {
    for (const char* name : {"QT_QUICK_BACKEND", "QSG_RHI_BACKEND", "QMLSCENE_DEVICE"}) {
        QProcessEnvironment environment = with(name, "opengl");
        environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
        EXPECT_FALSE(wantsSoftwareRenderer(environment, false)) << name;
    }
}

TEST(PanelRenderer, AnEmptyVariableIsNotSet) {
    for (const char* name : {"QT_QUICK_BACKEND", "QSG_RHI_BACKEND", "QMLSCENE_DEVICE"})
        EXPECT_TRUE(wantsSoftwareRenderer(with(name, ""), false)) << name;
}

} // namespace
} // namespace vorq
