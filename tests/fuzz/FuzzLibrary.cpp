// Any bytes as a file of the library, of the kind that the first byte says. Nothing crashes, what
// is read is JSON that another parser reads too, and what is written reads as what it was.

#include "library/records/HubAIChat.h"
#include "library/records/HubTask.h"
#include "library/records/HubTracker.h"
#include "library/records/SavedChat.h"
#include "library/records/SavedNote.h"

#include <cstdint>
#include <cstdlib>
#include <simdjson.h>

namespace {

using namespace vorq;

void demand(bool isTrue) {
    if (!isTrue) std::abort();
}

// Whole numbers beyond 64 bits are JSON, but not for the other parser.
bool isJson(QByteArrayView json) {
    simdjson::dom::parser parser;
    const auto error = parser.parse(json.data(), static_cast<std::size_t>(json.size())).error();
    return error == simdjson::SUCCESS || error == simdjson::NUMBER_ERROR;
}

// What is in order is written as it stands after one more reading and writing. The identities that
// questions and connections get anew are not compared.
template<typename Decode>
void check(QByteArrayView json, Decode decode) {
    const auto records = decode(json);
    if (!records) return;
    demand(isJson(json));
    const QByteArray written = encode(*records);
    const auto again = decode(written);
    demand(again && again->size() == records->size());
    demand(encode(*again) == written);
    if constexpr (requires { records->front().messages.front().quiz; }) return;
    if constexpr (requires { records->front().legacyPriority; }) return;
    demand(*again == *records);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const QByteArrayView json(data + 1, static_cast<qsizetype>(size - 1));
    const Date now{};
    switch (data[0] % 6) {
    case 0:
        check(json, [](QByteArrayView bytes) { return decodeSavedNotes(bytes); });
        break;
    case 1:
        check(json, [](QByteArrayView bytes) { return decodeSavedChats(bytes); });
        break;
    case 2:
        check(json, [](QByteArrayView bytes) { return decodeHubAIChats(bytes); });
        break;
    case 3:
        check(json, [](QByteArrayView bytes) { return decodeHubTasks(bytes); });
        break;
    case 4:
        check(json, [now](QByteArrayView bytes) { return decodeHubTaskColumns(bytes, now); });
        break;
    default:
        check(json, [now](QByteArrayView bytes) { return decodeHubTrackers(bytes, now); });
    }
    return 0;
}
