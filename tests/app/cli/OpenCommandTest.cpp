#include "app/cli/OpenCommand.h"
#include "doubles/panel/ConversationFixture.h"

namespace vorq {
namespace {

class OpenCommandTest : public ConversationFixture {
  protected:
    std::optional<int> open(const QString& url, const std::function<void()>& script) {
        std::optional<int> status;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        {
            Terminal terminal;
            OpenCommand command(state(), terminal);
            QObject::connect(&command, &OpenCommand::finished,
                             [&status](int ended) { status = ended; });
            command.start(url);
            m_clock.settle();
            script();
            m_clock.settle();
        }
        m_out = testing::internal::GetCapturedStdout();
        m_err = testing::internal::GetCapturedStderr();
        return status;
    }

    std::string m_out;
    std::string m_err;
};

TEST_F(OpenCommandTest, SignsInWithTheCodeOfTheLink) {
    const auto status = open("vorq://auth/callback?handoff=abc", [this] {
        EXPECT_EQ(exchange().path(), "/auth/mac-handoff/exchange");
        EXPECT_EQ(exchange().json()["code"], "abc");
        refuse(exchange(), 200, json({{"signedIn", true}, {"email", "ada@x.y"}, {"token", "new"}}));
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(m_out, "Signed in as ada@x.y.\n");
    EXPECT_EQ(m_defaults.string("vorq.session.token"), "new");
}

TEST_F(OpenCommandTest, ACodeThatIsRefusedFailsWithTheSentence) {
    const auto status = open("vorq://auth/callback?handoff=abc", [this] {
        refuse(exchange(), 400, "{\"error\":\"This code was used already.\"}");
    });
    EXPECT_EQ(status, 1);
    EXPECT_EQ(m_err, "This code was used already.\n");
    EXPECT_EQ(m_defaults.string("vorq.session.token"), "token");
}

TEST_F(OpenCommandTest, ALinkWithoutACodeIsNone) {
    EXPECT_EQ(open("vorq://auth/callback", [] {}), 2);
    EXPECT_EQ(open("mailto:x@y", [] {}), 2);
    EXPECT_EQ(m_transport.count(), 0u);
}

} // namespace
} // namespace vorq
