#include "shell/panel/ClipLoader.h"

#include "doubles/panel/ClipsFixture.h"

#include <new>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ClipLoaderTest = ClipsFixture;

TEST_F(ClipLoaderTest, AClipIsThereAtOnceAndIsResolvedInItsPlace) {
    choose({"a.txt", "b.png"});
    EXPECT_THAT(shown(), ElementsAre("a.txt…", "b.png…"));
    EXPECT_EQ(clips().index(1).data(AttachmentList::KindRole), "photo");
    EXPECT_THAT(clips().attachments(), IsEmpty());
    finish(1);
    EXPECT_THAT(shown(), ElementsAre("a.txt…", "b.png"));
    finish(0);
    EXPECT_THAT(shown(), ElementsAre("a.txt", "b.png"));
    EXPECT_EQ(clips().attachments()[0].textContent, "text");
}

TEST_F(ClipLoaderTest, TheCrossOfAClipStopsItsReadingAlone) {
    choose({"a.txt", "b.txt"});
    remove(0);
    EXPECT_TRUE(m_reader.readings()[0]->wasStopped());
    EXPECT_FALSE(m_reader.readings()[1]->wasStopped());
    EXPECT_THAT(shown(), ElementsAre("b.txt…"));
    finish(1);
    EXPECT_THAT(shown(), ElementsAre("b.txt"));
}

TEST_F(ClipLoaderTest, OneThatFailedSaysWhyAndCanBeReadAgain) {
    choose({"a.txt", "b.txt"});
    fail(0, "/files/a.txt: the file is not a text.");
    finish(1);
    EXPECT_THAT(shown(), ElementsAre("a.txt!", "b.txt"));
    EXPECT_EQ(clips().index(0).data(AttachmentList::ReasonRole), "The file is not a text.")
        << "the clip names the file already";
    clips().retry(1);
    clips().retry(0);
    m_clock.settle();
    EXPECT_THAT(shown(), ElementsAre("a.txt…", "b.txt"));
    EXPECT_EQ(clips().index(0).data(AttachmentList::ReasonRole), "");
    ASSERT_EQ(m_reader.readings().size(), 3U);
    EXPECT_EQ(m_reader.readings()[2]->path, "/files/a.txt");
    finish(2);
    EXPECT_THAT(shown(), ElementsAre("a.txt", "b.txt"));
}

TEST_F(ClipLoaderTest, OneWhoseReaderThrowsHasFailedAndCanBeReadAgain) {
    m_reader.answer = [](const QString&) -> AttachmentResult { throw std::bad_alloc(); };
    choose({"1", "2", "3", "4", "5"});
    EXPECT_THAT(shown(), ElementsAre("1!", "2!", "3!", "4!", "5!"));
    EXPECT_EQ(clips().index(0).data(AttachmentList::ReasonRole), "Reading it failed.");
    m_reader.answer = {};
    clips().retry(0);
    m_clock.settle();
    finish(5);
    EXPECT_THAT(shown(), ElementsAre("1", "2!", "3!", "4!", "5!"));
}

TEST_F(ClipLoaderTest, ManyAreReadSomeAtATimeInTheirOrder) {
    choose({"1", "2", "3", "4", "5", "6", "7"});
    EXPECT_EQ(m_reader.underWay(), ClipLoader::mostAtOnce);
    finish(2);
    EXPECT_EQ(m_reader.underWay(), ClipLoader::mostAtOnce);
    EXPECT_EQ(m_reader.readings().back()->path, "/files/5");
    remove(5); // it waits
    remove(0); // it is being read
    EXPECT_EQ(m_reader.readings().back()->path, "/files/7");
    EXPECT_THAT(shown(), ElementsAre("2…", "3", "4…", "5…", "7…"));
}

TEST_F(ClipLoaderTest, WithThePanelAllReadingsEnd) {
    choose({"1", "2", "3", "4", "5"});
    m_model.reset();
    m_clock.settle();
    EXPECT_EQ(m_reader.underWay(), 0);
    EXPECT_EQ(m_reader.readings().size(), 4U);
}

TEST_F(ClipLoaderTest, AFolderWithASlashHasItsName) {
    choose({"silt/"});
    EXPECT_THAT(shown(), ElementsAre("silt…"));
}

TEST_F(ClipLoaderTest, WhatHappensIsSaid) {
    QSignalSpy announced(&model(), &PanelViewModel::announced);
    const auto last = [&] { return announced.isEmpty() ? "" : announced.back()[0].toString(); };
    choose({"a.txt"});
    EXPECT_EQ(last(), "Loading a.txt");
    finish(0);
    EXPECT_EQ(last(), "Attached a.txt");
    choose({"b.txt", "c.txt", "d.txt"});
    EXPECT_EQ(last(), "Loading b.txt, c.txt, d.txt");
    EXPECT_EQ(announced.count(), 3) << "in one go";
    m_reader.fail(2, "it is locked");
    m_reader.finish(1);
    m_clock.settle();
    EXPECT_EQ(announced.back()[0], "Could not attach c.txt: it is locked. Attached b.txt");
    remove(3);
    EXPECT_EQ(announced.count(), 4);
}

} // namespace
} // namespace vorq
