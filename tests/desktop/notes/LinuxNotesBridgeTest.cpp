#include "platform/linux/notes/LinuxNotesBridge.h"

#include "doubles/platform/PrivateSession.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QDir>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Choice = LinuxNotesBridge::Choice;

} // namespace

TEST(LinuxNotesBridge, ReadsWhatTheUserSettledOn) {
    ScriptedDefaults defaults;
    EXPECT_EQ(LinuxNotesBridge::choice(defaults), Choice::Automatic);
    defaults.setString("vorq.notes.application", "gnote");
    EXPECT_EQ(LinuxNotesBridge::choice(defaults), Choice::Gnote);
    defaults.setString("vorq.notes.application", "folder");
    EXPECT_EQ(LinuxNotesBridge::choice(defaults), Choice::Folder);
    defaults.setString("vorq.notes.application", "other");
    EXPECT_EQ(LinuxNotesBridge::choice(defaults), Choice::Automatic);
}

TEST(LinuxNotesBridge, KeepsItsFolderAmongTheDocuments) {
    ScriptedDefaults defaults;
    EXPECT_TRUE(LinuxNotesBridge::folder(defaults).endsWith("/Vorq Notes"));
    defaults.setString("vorq.notes.folder", "relative");
    EXPECT_TRUE(LinuxNotesBridge::folder(defaults).endsWith("/Vorq Notes"));
    defaults.setString("vorq.notes.folder", "/mnt/notes/");
    EXPECT_EQ(LinuxNotesBridge::folder(defaults), u"/mnt/notes");
}

TEST(LinuxNotesBridge, TakesTheFolderWhereGnoteIsNotInstalled) {
    const PrivateSession session(PrivateSession::Display::None, PrivateSession::Services::None);
    ASSERT_EQ(session.problem(), QString());
    LinuxNotesBridge notes(Choice::Automatic, session.home(), session.bus());
    EXPECT_EQ(notes.createNote("Plan", "x"), u"Plan.md");
    EXPECT_EQ(notes.listNotes(5).size(), 1U);
    EXPECT_FALSE(notes.appendToNote("note://gnote/1", "y"));

    LinuxNotesBridge pinned(Choice::Gnote, session.home(), session.bus());
    EXPECT_FALSE(pinned.createNote("Plan", "x"));
    EXPECT_TRUE(pinned.listNotes(5).empty());

    LinuxNotesBridge without(Choice::Automatic, session.home(), QDBusConnection("none"));
    EXPECT_EQ(without.createNote("Plan", "x"), u"Plan (2).md");
}

TEST(LinuxNotesBridge, TakesGnoteWhereItIsInstalled) {
    const PrivateSession session;
    ASSERT_EQ(session.problem(), QString());
    ASSERT_TRUE(GnoteBridge::isAvailable(session.bus())) << "install the package gnote";
    LinuxNotesBridge pinned(Choice::Folder, session.home(), session.bus());
    const auto file = pinned.createNote("Plan", "one");
    EXPECT_EQ(file, u"Plan.md");

    LinuxNotesBridge notes(Choice::Automatic, session.home(), session.bus());
    const auto note = notes.createNote("Plan", "one");
    ASSERT_TRUE(note && GnoteBridge::ownsNote(*note));
    EXPECT_TRUE(notes.appendToNote(*note, "two"));
    EXPECT_TRUE(notes.appendToNote(*file, "two"));
    EXPECT_EQ(notes.noteBody(*note), u"Plan\n\none\n\ntwo");
    EXPECT_EQ(notes.noteBody(*file), u"# Plan\n\none\n\ntwo\n");
}

} // namespace vorq
