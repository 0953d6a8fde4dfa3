#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::bench {

/// md4c's bare parse, at its fastest: plain CommonMark with callbacks that do nothing.
void md4cParse(std::string_view utf8);

/// Adds a contender to a case: runs the work and reports the bytes of the text's UTF-8 form, in
/// whatever form the work reads it.
void addContender(const std::string& contender, const std::string& caseName, std::size_t bytes,
                  std::function<void()> work);

/// The growing texts of a reply that arrives in steps of 200 bytes, cut at characters; each is the
/// whole of it so far.
[[nodiscard]] std::vector<std::string> growingTexts(const std::string& reply);

/// Runs what was added, prints for each case the ratios to the first of the peers that is in it,
/// and gives the exit status.
int runContest(int argc, char** argv, const std::vector<std::string>& peers = {"md4c"});

} // namespace vorq::bench
