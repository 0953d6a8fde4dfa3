#include "Contest.h"

#include "RatioReporter.h"

#include <md4c.h>

namespace vorq::bench {

void md4cParse(std::string_view utf8) {
    MD_PARSER parser{};
    parser.flags = 0;
    parser.enter_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.leave_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
    parser.enter_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.leave_span = [](MD_SPANTYPE, void*, void*) { return 0; };
    parser.text = [](MD_TEXTTYPE, const MD_CHAR*, MD_SIZE, void*) { return 0; };
    md_parse(utf8.data(), static_cast<MD_SIZE>(utf8.size()), &parser, nullptr);
}

void addContender(const std::string& contender, const std::string& caseName, std::size_t bytes,
                  std::function<void()> work) {
    const std::string name = contender + '/' + caseName;
    benchmark::RegisterBenchmark(name.c_str(), [bytes, work](benchmark::State& state) {
        for (auto _ : state)
            work();
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    });
}

std::vector<std::string> growingTexts(const std::string& reply) {
    constexpr std::size_t step = 200;
    std::vector<std::string> texts;
    for (std::size_t size = step; size < reply.size(); size += step) {
        std::size_t end = size;
        while ((static_cast<unsigned char>(reply[end]) & 0xC0U) == 0x80U)
            ++end;
        texts.push_back(reply.substr(0, end));
    }
    return texts;
}

int runContest(int argc, char** argv, const std::vector<std::string>& peers) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter(peers);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

} // namespace vorq::bench
