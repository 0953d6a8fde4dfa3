#include "provider/ProviderTransfer.h"
#include "doubles/gateway/ProviderChain.h"
#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TlsProvider.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// What the user reads when the provider is at `address`.
std::string wordsFrom(const std::string& address, const std::string& caFile = {}) {
    ProviderConfig config = configFor(address);
    config.caFile = caFile;
    TestGateway gateway(std::make_unique<ProviderEngine>(config));
    gateway.signIn();
    const json body = gateway.post("/ai/prompt", {{"prompt", "hello"}}).body;
    return body.contains("error") ? body.value("error", "") : body.value("summary", "");
}

TEST(ProviderTransferTest, AModelThatLoadsBehindItsHeadHasTheTimeOfAReply) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            std::this_thread::sleep_for(milliseconds(900));
            peer.delta("Loaded.");
            peer.send("data: [DONE]\n\n");
        },
        [](ProviderConfig& config) {
            config.replyTimeout = milliseconds(20'000);
            config.idleTimeout = milliseconds(300);
        });
    EXPECT_EQ(chain.finalWords(), "Loaded.");
}

/// Two megabytes of text, which the provider reads in as many pauses as it has pieces of 64 KB.
Answer answerToLargeText(ProviderChain& chain) {
    return chain.gateway->post("/ai/analyze", {{"text", std::string(2'000'000, 'x')}});
}

void setReplyTimeout(ProviderConfig& config) {
    config.replyTimeout = milliseconds(600);
}

TEST(ProviderTransferTest, TheTimeThatARequestIsOnItsWayIsNoSilence) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            peer.delta("Read.");
            peer.send("data: [DONE]\n\n");
        },
        setReplyTimeout, ReadingPause(60));
    EXPECT_EQ(answerToLargeText(chain).body.value("summary", ""), "Read.");
}

TEST(ProviderTransferTest, SilenceBehindALongRequestIsNotedAllTheSame) {
    ProviderChain chain([](ProviderPeer& peer) { peer.awaitClose(); }, setReplyTimeout,
                        ReadingPause(60));
    EXPECT_THAT(answerToLargeText(chain).body.value("error", ""), HasSubstr("too long"));
    EXPECT_GT(chain.provider.lastRequest().size(), 2'000'000U);
}

TEST(ProviderTransferTest, AProviderThatStopsReadingIsSilent) {
    ProviderChain chain([](ProviderPeer&) {}, setReplyTimeout, ReadingPause(1'500));
    EXPECT_THAT(answerToLargeText(chain).body.value("error", ""), HasSubstr("too long"));
    EXPECT_EQ(chain.provider.lastRequest(), "") << "it was not read to its end";
}

TEST(ProviderTransferTest, TheTimeInWhichNobodyReadsAReplyIsNoSilence) {
    const ScriptedProvider provider([](ProviderPeer& peer) {
        peer.streamHead();
        for (int i = 0; i < 4'000; ++i)
            peer.send(": " + std::string(1'000, 'x') + "\n\n");
        peer.awaitClose();
    });
    ProviderConfig config = configFor(provider.address());
    config.replyTimeout = config.idleTimeout = milliseconds(300);
    TransferLoop loop;
    ProviderTransfer transfer(loop, config, "{}");
    std::this_thread::sleep_for(milliseconds(1'500));
    const SteadyTime now = std::chrono::steady_clock::now();
    EXPECT_GT(transfer.read(now).value_or("").size(), 900'000U);
    EXPECT_NO_THROW(static_cast<void>(transfer.read(now)));
}

TEST(ProviderTransferTest, AClientThatKeepsItsReplyBackForLongGetsItWhole) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            // Each event repeats the text, so a few of them fill what the system buffers.
            for (int i = 0; i < 6; ++i) {
                peer.delta(std::string(i == 0 ? 1'500'000 : 1, 'x'));
                std::this_thread::sleep_for(milliseconds(100));
            }
            for (int i = 0; i < 4'000; ++i)
                peer.send(": " + std::string(1'000, 'x') + "\n\n");
            peer.delta("The end.");
            peer.send("data: [DONE]\n\n");
        },
        milliseconds(800));
    const std::string body = R"({"prompt":"x","stream":true})";
    RawClient client(chain.gateway->port, 4'096);
    client.send("POST /ai/prompt HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                "Authorization: Bearer " +
                chain.gateway->token + "\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\n\r\n" + body);
    std::this_thread::sleep_for(milliseconds(2'500));
    const std::string answer = client.receiveAll();
    EXPECT_TRUE(answer.contains("\"done\""));
    EXPECT_TRUE(answer.contains("xThe end.\""));
    EXPECT_FALSE(answer.contains("too long"));
}

TEST(ProviderTransferTest, CommentsOfTheProviderAreSignsOfLife) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            for (int i = 0; i < 10; ++i) {
                peer.send(": OPENROUTER PROCESSING\n\n");
                std::this_thread::sleep_for(milliseconds(100));
            }
            peer.delta("At last.");
            peer.send("data: [DONE]\n\n");
        },
        milliseconds(700));
    EXPECT_EQ(chain.finalWords(), "At last.");
}

TEST(ProviderTransferTest, ThoughtsAreSignsOfLife) {
    for (const char* key : {"reasoning", "reasoning_content"}) {
        ProviderChain chain(
            [key](ProviderPeer& peer) {
                peer.streamHead();
                for (int i = 0; i < 10; ++i) {
                    peer.send("data: " + json({{"choices", {{{"delta", {{key, "hm"}}}}}}}).dump() +
                              "\n\n");
                    std::this_thread::sleep_for(milliseconds(100));
                }
                peer.delta("Thought.");
                peer.send("data: [DONE]\n\n");
            },
            milliseconds(700));
        EXPECT_EQ(chain.finalWords(), "Thought.") << key;
    }
}

TEST(ProviderTransferTest, AReplyThatHasBegunMayNotFallSilentForTheTimeOfAReply) {
    for (const char* key : {"content", "reasoning_content"}) {
        ProviderChain chain(
            [key](ProviderPeer& peer) {
                peer.streamHead();
                peer.send("data: " + json({{"choices", {{{"delta", {{key, "hm"}}}}}}}).dump() +
                          "\n\n");
                peer.awaitClose();
            },
            [](ProviderConfig& config) {
                config.replyTimeout = milliseconds(60'000);
                config.idleTimeout = milliseconds(300);
            });
        EXPECT_THAT(chain.finalWords(), HasSubstr("too long")) << key;
    }
}

TEST(ProviderTransferTest, TheKeyGoesIntoTheHeaderThatTheSettingsName) {
    ProviderChain chain(
        [](ProviderPeer& peer) {
            peer.streamHead();
            peer.delta("Taken.");
            peer.send("data: [DONE]\n\n");
        },
        [](ProviderConfig& config) {
            config.keyHeader = "api-key";
            config.endpoint.replace(config.endpoint.find("/v1/"), 4, "/openai/deployments/d/");
            config.endpoint += "?api-version=2024-06-01";
        });
    EXPECT_EQ(chain.finalWords(), "Taken.");
    const std::string request = chain.provider.lastRequest();
    EXPECT_THAT(request,
                StartsWith("POST /openai/deployments/d/chat/completions?api-version=2024-06-01 "));
    EXPECT_THAT(request, HasSubstr(std::string("\r\napi-key: ") + kProviderKey + "\r\n"));
    EXPECT_THAT(request, Not(HasSubstr("Authorization")));
}

TEST(ProviderTransferTest, EndlessHeadersAndTrailersEndTheTransfer) {
    for (const bool behind : {false, true}) {
        std::atomic<bool> left = false;
        ProviderChain chain([&, behind](ProviderPeer& peer) {
            peer.send("HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n");
            if (behind) peer.send("Transfer-Encoding: chunked\r\n\r\n2\r\n\n\n\r\n0\r\n");
            const std::string lines = [] {
                std::string text;
                for (int i = 0; i < 64; ++i)
                    text += "X-Endless: " + std::string(1000, 'x') + "\r\n";
                return text;
            }();
            for (int i = 0; i < 1600 && !left; ++i)
                left = !peer.send(lines); // 100 MB in all
        });
        EXPECT_THAT(chain.finalWords(), HasSubstr("too long")) << behind;
        for (int i = 0; i < 100 && !left; ++i)
            std::this_thread::sleep_for(milliseconds(50));
        EXPECT_TRUE(left) << behind;
    }
}

TEST(ProviderTransferTest, ACertificateOfNoKnownAuthorityIsNamedWithTheSettingThatHelps) {
    const TlsProvider provider;
    EXPECT_THAT(wordsFrom(provider.address()),
                AllOf(HasSubstr("certificate of the AI provider at " + provider.address()),
                      HasSubstr("\"caFile\"")));
    EXPECT_EQ(wordsFrom(provider.address(), provider.certificateFile().string()), "Over TLS.");
}

TEST(ProviderTransferTest, NoReplySharesItsConnectionWithOneThatMayBeReadSlowly) {
    const TlsProvider provider;
    EXPECT_EQ(wordsFrom(provider.address(), provider.certificateFile().string()), "Over TLS.");
    EXPECT_EQ(provider.offeredProtocols(), "\x08http/1.1");
}

TEST(ProviderTransferTest, ACertificateForAnotherNameIsSaid) {
    const TlsProvider provider({.days = 2, .name = "elsewhere.example"});
    EXPECT_THAT(wordsFrom(provider.address(), provider.certificateFile().string()),
                AllOf(HasSubstr("certificate"), HasSubstr("another name"), HasSubstr("\"url\"")));
}

TEST(ProviderTransferTest, AnExpiredCertificateIsSaid) {
    const TlsProvider provider({.days = -1, .name = "localhost"});
    EXPECT_THAT(wordsFrom(provider.address(), provider.certificateFile().string()),
                AllOf(HasSubstr("certificate"), HasSubstr("expired")));
}

TEST(ProviderTransferTest, AFileOfCertificatesThatIsNotThereIsNamed) {
    const TlsProvider provider;
    EXPECT_THAT(wordsFrom(provider.address(), "/no/such/ca.pem"),
                AllOf(HasSubstr("/no/such/ca.pem"), HasSubstr("\"caFile\"")));
}

TEST(ProviderTransferTest, TheWrongSchemeIsSaid) {
    const TestGateway plain;
    EXPECT_THAT(wordsFrom("https://localhost:" + std::to_string(plain.port)),
                AllOf(HasSubstr("TLS"), HasSubstr("write http://")));
}

TEST(ProviderTransferTest, WhatIsNoWebServerIsSaid) {
    ProviderChain chain([](ProviderPeer& peer) { peer.send("220 mail.example ESMTP\r\n"); });
    EXPECT_THAT(chain.finalWords(), AllOf(HasSubstr("no web server"), HasSubstr("\"url\"")));
}

TEST(ProviderTransferTest, AKeyThatIsMissingIsAskedFor) {
    ProviderChain chain(
        [](ProviderPeer& peer) { peer.answer(401, R"({"error":{"message":"No key."}})"); },
        [](ProviderConfig& config) { config.key.clear(); });
    EXPECT_THAT(chain.finalWords(), AllOf(HasSubstr("\"key\""), HasSubstr("No key.")));
}

TEST(ProviderTransferTest, AHostThatNobodyKnowsIsNamed) {
    EXPECT_THAT(wordsFrom("http://no-such-host.invalid"),
                AllOf(HasSubstr("no-such-host.invalid"), HasSubstr("\"url\"")));
}

} // namespace
} // namespace vorq::gateway::testing
