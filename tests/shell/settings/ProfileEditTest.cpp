#include "doubles/shell/SettingsFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <semaphore>

namespace vorq {
namespace {

class ProfileEditTest : public SettingsFixture {
  protected:
    ~ProfileEditTest() override { m_slowPicture.release(); }

    // Whose reading goes on until it is let go.
    void chooseSlowPicture() {
        tools->onAvatar = [this] { m_slowPicture.acquire(); };
        profile().usePicture(QUrl::fromLocalFile(putFile("slow.png", "a picture")));
    }
    void endReading() {
        m_slowPicture.release();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
        clock.settle();
        tools->onAvatar = {};
    }

  private:
    std::counting_semaphore<> m_slowPicture{0};
};

TEST_F(ProfileEditTest, ItBeginsWithWhatIsStored) {
    EXPECT_EQ(profile().firstName(), "Ada");
    EXPECT_EQ(profile().lastName(), "Lovelace");
    EXPECT_FALSE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, SavingSendsTheNamesAndKeepsTheUsername) {
    QSignalSpy saved(&profile(), &ProfileEdit::saved);
    profile().setFirstName("  Augusta ");
    EXPECT_TRUE(profile().isUnsaved());
    profile().save();
    clock.settle();
    EXPECT_TRUE(profile().isSaving());
    EXPECT_EQ(transport.last().path(), "/auth/profile");
    EXPECT_EQ(
        transport.last().json(),
        (QVariantMap{{"firstName", "Augusta"}, {"lastName", "Lovelace"}, {"username", "ada"}}));
    answerSaved(R"(,"firstName":"Augusta","lastName":"Lovelace","username":"ada")");
    EXPECT_FALSE(profile().isSaving());
    EXPECT_TRUE(profile().didSave());
    EXPECT_EQ(saved.count(), 1);
    EXPECT_FALSE(profile().isUnsaved());
    EXPECT_EQ(profile().firstName(), "Augusta");
    EXPECT_EQ(defaults.string("vorq.session.firstName"), "Augusta");
    profile().setFirstName("Ada");
    EXPECT_FALSE(profile().didSave()) << "what was confirmed is no more what stands there";
}

TEST_F(ProfileEditTest, AFailureIsSaidAndNothingIsLost) {
    profile().setFirstName("Augusta");
    profile().save();
    clock.settle();
    answer(400, R"({"error":"The name is too long."})");
    EXPECT_EQ(profile().error(), "The name is too long.");
    EXPECT_EQ(profile().firstName(), "Augusta");
    EXPECT_TRUE(profile().isUnsaved());
    EXPECT_FALSE(profile().didSave());
}

TEST_F(ProfileEditTest, ASecondSaveDuringTheFirstDoesNothing) {
    profile().setFirstName("Augusta");
    profile().save();
    profile().save();
    clock.settle();
    profile().save();
    clock.settle();
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(ProfileEditTest, SavingCanBeGivenUp) {
    profile().setFirstName("Augusta");
    profile().save();
    clock.settle();
    profile().cancel();
    clock.settle();
    EXPECT_FALSE(profile().isSaving());
    EXPECT_EQ(profile().firstName(), "Augusta");
    EXPECT_EQ(profile().error(), "");
    EXPECT_TRUE(transport.last().isAbandoned());
    profile().save();
    clock.settle();
    EXPECT_EQ(transport.count(), 2U);
}

TEST_F(ProfileEditTest, AChosenPictureWaitsForTheSaving) {
    tools->avatar = jpeg(Qt::red);
    choose(putFile("me.png", "a picture"));
    EXPECT_TRUE(profile().picture()->isThere());
    EXPECT_TRUE(profile().isUnsaved());
    EXPECT_EQ(state->account().profile().image, QByteArray());
    profile().save();
    clock.settle();
    answerSaved();
    EXPECT_EQ(state->account().profile().image, *tools->avatar);
    EXPECT_FALSE(profile().isUnsaved());
    ASSERT_TRUE(QTest::qWaitFor([this] { return settings->account()->picture()->isThere(); }));
}

TEST_F(ProfileEditTest, SavingWaitsForAPictureThatIsBeingRead) {
    tools->avatar = jpeg(Qt::red);
    chooseSlowPicture();
    EXPECT_TRUE(profile().isUnsaved()) << "the page is not left without a question";
    profile().save();
    clock.settle();
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_TRUE(profile().isSaving());
    endReading();
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_TRUE(profile().isSaving());
    answerSaved();
    EXPECT_EQ(state->account().profile().image, *tools->avatar);
    EXPECT_TRUE(profile().didSave());
    EXPECT_FALSE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, ASavingThatWaitsForAPictureCanBeGivenUp) {
    tools->avatar = jpeg(Qt::red);
    chooseSlowPicture();
    profile().save();
    profile().cancel();
    EXPECT_FALSE(profile().isSaving());
    endReading();
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_TRUE(profile().picture()->isThere()) << "what was chosen stays";
    EXPECT_TRUE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, ASavingThatWaitsForAPictureEndsWithTheSession) {
    tools->avatar = jpeg(Qt::red);
    chooseSlowPicture();
    profile().save();
    expire();
    EXPECT_FALSE(profile().isSaving());
    endReading();
    EXPECT_EQ(state->account().profile().image, QByteArray());
    EXPECT_TRUE(profile().isUnsaved()) << "it waits for the session to come back";
}

TEST_F(ProfileEditTest, NothingIsSavedWithoutThePictureThatWasWanted) {
    profile().setFirstName("Augusta");
    chooseSlowPicture();
    profile().save();
    endReading();
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_FALSE(profile().isSaving());
    EXPECT_NE(profile().pictureError(), "");
    EXPECT_TRUE(profile().isUnsaved());
    profile().save();
    clock.settle();
    EXPECT_EQ(transport.count(), 1U) << "told of it, the user wants the names saved";
}

TEST_F(ProfileEditTest, APictureThatIsChosenDuringTheSavingIsNotLost) {
    profile().setFirstName("Augusta");
    profile().save();
    clock.settle();
    tools->avatar = jpeg(Qt::red);
    choose(putFile("me.png", "a picture"));
    answerSaved(R"(,"firstName":"Augusta","lastName":"Lovelace")");
    EXPECT_TRUE(profile().isUnsaved());
    EXPECT_FALSE(profile().didSave());
    profile().save();
    clock.settle();
    answerSaved(R"(,"firstName":"Augusta","lastName":"Lovelace")");
    EXPECT_EQ(state->account().profile().image, *tools->avatar);
    EXPECT_FALSE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, AnotherPictureThatIsChosenDuringTheSavingTakesThePlaceOfTheFirst) {
    tools->avatar = jpeg(Qt::red);
    const QByteArray first = *tools->avatar;
    choose(putFile("me.png", "a picture"));
    profile().save();
    clock.settle();
    tools->avatar = jpeg(Qt::blue);
    choose(putFile("me too.png", "another"));
    answerSaved();
    EXPECT_EQ(state->account().profile().image, first);
    EXPECT_TRUE(profile().isUnsaved());
    EXPECT_EQ(profile().picture()->image(), QImage::fromData(*tools->avatar));
}

TEST_F(ProfileEditTest, AFailureGoesWithWhatItWasAbout) {
    const auto fail = [this] {
        profile().setFirstName("Augusta");
        profile().save();
        clock.settle();
        answer(400, R"({"error":"The name is too long."})");
    };
    fail();
    ASSERT_EQ(profile().error(), "The name is too long.");
    profile().setFirstName("A");
    EXPECT_EQ(profile().error(), "");
    fail();
    ASSERT_EQ(profile().error(), "The name is too long.");
    profile().reset();
    EXPECT_EQ(profile().error(), "");
}

TEST_F(ProfileEditTest, WhatIsNoPictureIsSaidAndChangesNothing) {
    tools->avatar = jpeg(Qt::red);
    choose(putFile("me.png", "a picture"));
    const QImage before = profile().picture()->image();
    tools->avatar = std::unexpected(DocumentFailure::Unreadable);
    choose(putFile("text.jpg", "no picture at all"));
    EXPECT_TRUE(profile().pictureError().startsWith("This file is no picture, or it is damaged."))
        << qPrintable(profile().pictureError());
    EXPECT_EQ(profile().picture()->image(), before) << "the one chosen before stays";
    tools->avatar = std::unexpected(DocumentFailure::TooLarge);
    choose(putFile("huge.png", "200 megapixels"));
    EXPECT_TRUE(profile().pictureError().contains("too many pixels"));
    tools->avatar = std::unexpected(DocumentFailure::Animated);
    choose(putFile("moving.gif", "frames"));
    EXPECT_TRUE(profile().pictureError().contains("animated"));
}

TEST_F(ProfileEditTest, PipesFoldersAndWhatIsNotThereAreNotOpened) {
    const QString pipe = folder.filePath("pipe.jpg");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    for (const QString& path : {pipe, folder.path(), QString("/dev/zero")}) {
        choose(path);
        EXPECT_EQ(profile().pictureError(), "This is no file. Choose a picture.")
            << qPrintable(path);
    }
    choose(folder.filePath("gone.jpg"));
    EXPECT_NE(profile().pictureError(), "");
    profile().usePicture(QUrl("https://example.org/me.jpg"));
    EXPECT_EQ(profile().pictureError(), "Choose a picture on this computer.");
    EXPECT_TRUE(tools->asked.isEmpty());
    EXPECT_FALSE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, APictureThatIsDroppedIsTakenAsAChosenOne) {
    tools->avatar = jpeg(Qt::red);
    profile().useDropped({QUrl::fromLocalFile(putFile("me.png", "a picture"))});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
    EXPECT_EQ(profile().picture()->image(), QImage::fromData(*tools->avatar));
    EXPECT_TRUE(profile().isUnsaved());
    tools->avatar = std::unexpected(DocumentFailure::Unreadable);
    profile().useDropped({QUrl::fromLocalFile(putFile("text.jpg", "no picture at all"))});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
    EXPECT_TRUE(profile().pictureError().startsWith("This file is no picture, or it is damaged."))
        << qPrintable(profile().pictureError());
    profile().useDropped({QUrl("https://example.org/me.jpg")});
    EXPECT_EQ(profile().pictureError(), "Choose a picture on this computer.");
}

TEST_F(ProfileEditTest, OfSeveralThatAreDroppedNoneIsTaken) {
    tools->avatar = jpeg(Qt::red);
    profile().useDropped({QUrl::fromLocalFile(putFile("me.png", "a picture")),
                          QUrl::fromLocalFile(putFile("you.png", "a picture"))});
    EXPECT_EQ(profile().pictureError(), "Choose a single picture.");
    EXPECT_FALSE(profile().isReadingPicture());
    EXPECT_FALSE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, APictureWithoutAFileIsCheckedAsFilesAre) {
    tools->avatar = jpeg(Qt::red);
    profile().useDroppedPicture("encoded");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
    EXPECT_EQ(tools->asked, QStringList("avatar"));
    EXPECT_EQ(profile().picture()->image(), QImage::fromData(*tools->avatar));
    tools->avatar = std::unexpected(DocumentFailure::TooLarge);
    profile().useDroppedPicture("too many pixels");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
    EXPECT_TRUE(profile().pictureError().contains("too many pixels"));
}

TEST_F(ProfileEditTest, TheSameRefusalIsToldAnew) {
    QStringList told;
    QObject::connect(&profile(), &ProfileEdit::changed, [&] {
        const QString error = profile().pictureError();
        if (told.isEmpty() || told.back() != error) told += error;
    });
    profile().usePicture(QUrl("https://example.org/me.jpg"));
    profile().usePicture(QUrl("https://example.org/me.jpg"));
    EXPECT_EQ(told.count("Choose a picture on this computer."), 2);
}

TEST_F(ProfileEditTest, TheEditSurvivesTheEndOfTheSession) {
    profile().setFirstName("Augusta");
    expire();
    EXPECT_EQ(profile().firstName(), "Augusta");
    signInAs("ada@example.org");
    EXPECT_EQ(profile().firstName(), "Augusta");
    EXPECT_TRUE(profile().isUnsaved());
}

TEST_F(ProfileEditTest, TheEditIsNotForAnotherUserNorForWhoSignsOut) {
    profile().setFirstName("Augusta");
    expire();
    signInAs("grace@example.org");
    EXPECT_EQ(profile().firstName(), "Ada");
    EXPECT_FALSE(profile().isUnsaved());
    profile().setLastName("Hopper");
    state->account().signOut();
    EXPECT_EQ(profile().lastName(), "");
}

TEST_F(ProfileEditTest, NamesThatChangeElsewhereShowUnlessTheyAreEdited) {
    state->account().applyProfile("Byron", "King", "ada", "");
    EXPECT_EQ(profile().firstName(), "Byron");
    profile().setFirstName("Augusta");
    state->account().applyProfile("Anne", "King", "ada", "");
    EXPECT_EQ(profile().firstName(), "Augusta");
}

} // namespace
} // namespace vorq
