#include "app/cli/AskFiles.h"

#include "doubles/capture/ScriptedAttachmentReader.h"

#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace vorq {
namespace {

TEST(AskFiles, AreReadInTheirOrder) {
    ScriptedAttachmentReader reader;
    reader.answer = [](const QString& path) {
        PromptAttachment attachment;
        attachment.fileName = path;
        return attachment;
    };
    const auto read = readAskedFiles({"a.txt", "b.txt"}, reader);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->size(), 2);
    EXPECT_EQ(read->at(0).fileName, "a.txt");
    EXPECT_EQ(read->at(1).fileName, "b.txt");
}

TEST(AskFiles, AnInterruptStopsTheReadingAndTellsNothing) {
    ScriptedAttachmentReader reader;
    QTimer::singleShot(0, [] { ::kill(::getpid(), SIGINT); });
    const auto read = readAskedFiles({"a.docx", "b.docx"}, reader);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().exitStatus, 128 + SIGINT);
    EXPECT_EQ(read.error().sentence, "");
    ASSERT_EQ(reader.readings().size(), 1u);
    EXPECT_TRUE(reader.readings()[0]->wasStopped());
}

} // namespace
} // namespace vorq
