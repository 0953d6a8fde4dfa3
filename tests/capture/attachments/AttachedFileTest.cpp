#include "capture/attachments/AttachedFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>

namespace vorq {
namespace {

class AttachedFileTest : public testing::Test {
  protected:
    void put(const QString& path, const QByteArray& bytes) const {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    std::expected<AttachedFile, QString> open() {
        return AttachedFile::open(m_path, PromptAttachment::Pipes::Refused);
    }
    static QByteArray readBy(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("a.txt");
};

TEST_F(AttachedFileTest, WhatTakesItsPlaceIsNotRead) {
    put(m_path, "chosen");
    auto file = open();
    ASSERT_TRUE(file);
    put(m_folder.filePath("b.txt"), "another");
    ASSERT_EQ(::rename(qPrintable(m_folder.filePath("b.txt")), qPrintable(m_path)), 0);
    EXPECT_EQ(file->read(100, {}), "chosen");
    EXPECT_EQ(readBy(file->openedPath()), "chosen");
}

TEST_F(AttachedFileTest, IsReadAfterItHasVanished) {
    put(m_path, "chosen");
    auto file = open();
    ASSERT_TRUE(file);
    ASSERT_TRUE(QFile::remove(m_path));
    EXPECT_EQ(file->read(100, {}), "chosen");
    EXPECT_EQ(readBy(file->openedPath()), "chosen");
}

TEST_F(AttachedFileTest, IsReadAsFarAsItGoesWhenItShrinks) {
    put(m_path, "chosen");
    auto file = open();
    ASSERT_TRUE(file);
    ASSERT_TRUE(QFile::resize(m_path, 3));
    EXPECT_EQ(file->read(100, {}), "cho");
}

} // namespace
} // namespace vorq
