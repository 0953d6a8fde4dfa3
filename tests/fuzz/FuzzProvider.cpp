// Any bytes as a provider's answer, and as what its model wrote: how the network cuts them must not
// matter, and what is made of them must be whole.

#include "engine/Engine.h"
#include "provider/ChatStreamReader.h"
#include "provider/ModelJson.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vorq::gateway;

struct Reading {
    std::string text;
    std::string error;
    std::vector<Source> sources;
    bool isCutShort = false;

    bool operator==(const Reading&) const = default;
};

// Cuts the answer into reads of up to `longest` bytes.
Reading read(std::string_view answer, std::size_t longest, unsigned seed) {
    std::minstd_rand random(seed + 1);
    std::uniform_int_distribution<std::size_t> lengths(1, longest);
    Reading reading;
    ChatStreamReader reader;
    try {
        while (!reader.isDone() && !answer.empty()) {
            const std::size_t length = std::min(lengths(random), answer.size());
            // A copy of its own, so that reading beyond it is found.
            reader.feed(std::string(answer.substr(0, length)));
            answer.remove_prefix(length);
        }
        reader.finish();
        reading.text = reader.text();
        reading.sources = reader.sources();
        reading.isCutShort = reader.isCutShort();
        if (reading.text.empty()) std::abort();
    } catch (const EngineError& error) {
        reading.error = error.what();
        if (reading.error.empty() || error.status == 401) std::abort();
    }
    return reading;
}

void readModel(std::string_view reply) {
    static_cast<void>(readWholeReply(reply));
    for (const Flashcard& card : readFlashcards(reply)) {
        if (card.front.empty() || card.back.empty()) std::abort();
    }
    for (const QuizQuestion& question : readQuiz(reply).questions) {
        if (question.prompt.empty() || question.options.size() < 2 ||
            question.answerIndex >= question.options.size()) {
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view answer(reinterpret_cast<const char*>(data) + 1, size - 1);
    const Reading whole = read(answer, std::max<std::size_t>(answer.size(), 1), 0);
    if (read(answer, 1, 0) != whole || read(answer, 2 + data[0] % 64, data[0]) != whole) {
        std::abort();
    }
    readModel(answer);
    return 0;
}
