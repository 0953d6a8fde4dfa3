// vorq-cli-files FOLDER VERSION DATE: writes the manual pages and the completions of both programs,
// each to where it stands in an installation's folder "share".

#include "Completions.h"
#include "ManPage.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using namespace vorq::packaging;
namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.flush();
    if (!stream) throw std::runtime_error("cannot write " + file.string());
}

void writeAll(const Program& program, const fs::path& folder, const std::string& version,
              const std::string& date) {
    write(folder / "man/man1" / (program.name + ".1"), manPage(program, version, date));
    write(folder / "bash-completion/completions" / program.name, bashCompletion(program));
    write(folder / "zsh/site-functions" / ('_' + program.name), zshCompletion(program));
    write(folder / "fish/vendor_completions.d" / (program.name + ".fish"), fishCompletion(program));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: vorq-cli-files FOLDER VERSION DATE\n", stderr);
        return 2;
    }
    try {
        for (const Program& program : {desktopProgram(), gatewayProgram()})
            writeAll(program, argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vorq-cli-files: %s\n", error.what());
        return 1;
    }
    return 0;
}
