#include "settings/SettingsFile.h"

#include "support/Filled.h"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vorq::gateway {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string settingsText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream || fs::is_directory(file)) {
        if (!fs::exists(file)) return "{}";
        throw std::runtime_error(filled("Could not read {}.", file.string()));
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A file that is being written, open to its owner alone.
class NewFile {
  public:
    explicit NewFile(fs::path path)
        : m_path(std::move(path)),
          m_descriptor(
              open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        check(m_descriptor >= 0 && fchmod(m_descriptor, 0600) == 0);
    }
    ~NewFile() {
        if (m_descriptor >= 0) close(m_descriptor);
        if (!m_isInPlace) unlink(m_path.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(const std::string& text) {
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t count = ::write(m_descriptor, text.data() + done, text.size() - done);
            check(count > 0);
            done += static_cast<std::size_t>(count);
        }
        check(fsync(m_descriptor) == 0);
    }
    void moveTo(const fs::path& file) {
        check(rename(m_path.c_str(), file.c_str()) == 0);
        m_isInPlace = true;
        const int folder = open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder < 0) return;
        fsync(folder);
        close(folder);
    }

  private:
    void check(bool isGood) const {
        if (!isGood) throw std::runtime_error(filled("Could not write {}.", m_path.string()));
    }

    fs::path m_path;
    int m_descriptor;
    bool m_isInPlace = false;
};

void replaceFile(const fs::path& file, const std::string& text) {
    NewFile fresh(file.string() + ".new");
    fresh.write(text);
    fresh.moveTo(file);
}

} // namespace

json readSettingsFile(const fs::path& file) {
    const std::string text = settingsText(file);
    try {
        json document = json::parse(text, nullptr, true, true);
        if (document.is_object()) return document;
    } catch (const json::parse_error& error) {
        // The library's own message may quote the key.
        const std::size_t behind = std::min(error.byte, text.size());
        const auto line =
            1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(behind), '\n');
        throw std::runtime_error(
            filled("{} is not valid JSON, as line {} shows.", file.string(), line));
    }
    throw std::runtime_error(filled("{} is not a JSON object.", file.string()));
}

void writeSettingsFile(const fs::path& file, const json& document) {
    std::error_code error;
    // A link stays one.
    const fs::path real =
        fs::is_symlink(fs::symlink_status(file, error)) ? fs::canonical(file, error) : file;
    if (real.empty()) throw std::runtime_error(filled("Could not write {}.", file.string()));
    fs::create_directories(real.parent_path(), error);
    const std::string former = settingsText(real);
    if (!json::accept(former)) replaceFile(real.string() + ".bak", former);
    replaceFile(real, document.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
}

} // namespace vorq::gateway
