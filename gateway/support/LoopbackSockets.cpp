#include "support/LoopbackSockets.h"

#include <arpa/inet.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

namespace vorq::gateway {
namespace {

constexpr unsigned kEstablished = 1;
constexpr unsigned kListening = 10;
constexpr std::string_view kMappedText = "::ffff:";
/// The same in the kernel's spelling.
constexpr std::string_view kMappedWords = "0000000000000000FFFF0000";

/// One line of the kernel's table of TCP sockets.
struct SocketRow {
    std::string localAddress;
    std::uint16_t localPort = 0;
    std::string remoteAddress;
    std::uint16_t remotePort = 0;
    unsigned state = 0;
    uid_t user = 0;
};

/// An IPv4 address that a socket of both families names stands as the kernel has it in IPv4.
std::string withoutMapping(std::string words) {
    if (words.size() > kMappedWords.size() && words.starts_with(kMappedWords))
        words.erase(0, kMappedWords.size());
    return words;
}

bool parseSocketEnd(const std::string& text, std::string& address, std::uint16_t& port) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) return false;
    address = withoutMapping(text.substr(0, colon));
    const char* end = text.data() + text.size();
    return std::from_chars(text.data() + colon + 1, end, port, 16).ec == std::errc();
}

std::optional<SocketRow> parseSocketRow(const std::string& line) {
    std::istringstream words(line);
    std::string number;
    std::string local;
    std::string remote;
    std::string queues;
    std::string timer;
    std::string retries;
    SocketRow row;
    const bool isWhole =
        static_cast<bool>(words >> number >> local >> remote >> std::hex >> row.state >> queues >>
                          timer >> retries >> std::dec >> row.user);
    if (!isWhole || !parseSocketEnd(local, row.localAddress, row.localPort) ||
        !parseSocketEnd(remote, row.remoteAddress, row.remotePort))
        return std::nullopt;
    return row;
}

std::string withoutMappedPrefix(const std::string& address) {
    return address.starts_with(kMappedText) ? address.substr(kMappedText.size()) : address;
}

/// The kernel's spelling: the words of the address as this machine holds them, in hexadecimal.
std::string kernelWords(const std::string& address) {
    const std::string plain = withoutMappedPrefix(address);
    std::array<std::uint32_t, 4> words{};
    const bool isFour = inet_pton(AF_INET, plain.c_str(), words.data()) == 1;
    if (!isFour && inet_pton(AF_INET6, plain.c_str(), words.data()) != 1) return {};
    std::string text;
    for (std::size_t i = 0; i < (isFour ? 1U : words.size()); ++i) {
        std::array<char, 9> word{};
        std::snprintf(word.data(), word.size(), "%08X", words.at(i));
        text += word.data();
    }
    return text;
}

template<typename Matches>
std::optional<uid_t> userOfRow(std::string_view table, const Matches& matches) {
    std::istringstream lines{std::string(table)};
    for (std::string line; std::getline(lines, line);) {
        const std::optional<SocketRow> row = parseSocketRow(line);
        if (row && matches(*row)) return row->user;
    }
    return std::nullopt;
}

template<typename Find>
std::optional<uid_t> userInTables(const Find& find) {
    for (const char* file : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        std::ifstream stream(file);
        const std::string table{std::istreambuf_iterator<char>(stream), {}};
        if (const std::optional<uid_t> user = find(table)) return user;
    }
    return std::nullopt;
}

} // namespace

bool isLoopbackAddress(const std::string& address) {
    const std::string plain = withoutMappedPrefix(address);
    return plain == "::1" || (plain.starts_with("127.") && kernelWords(plain).size() == 8);
}

std::optional<uid_t> peerUserIn(std::string_view table, const SocketEnd& peer,
                                const SocketEnd& own) {
    const std::string local = kernelWords(peer.address);
    const std::string remote = kernelWords(own.address);
    return userOfRow(table, [&](const SocketRow& row) {
        return row.state == kEstablished && row.localPort == peer.port &&
               row.remotePort == own.port && row.localAddress == local &&
               row.remoteAddress == remote;
    });
}

std::optional<uid_t> listeningUserIn(std::string_view table, std::uint16_t port) {
    const std::string loopback = kernelWords("127.0.0.1");
    return userOfRow(table, [&](const SocketRow& row) {
        const bool isAny = row.localAddress.find_first_not_of('0') == std::string::npos;
        return row.state == kListening && row.localPort == port &&
               (row.localAddress == loopback || isAny);
    });
}

std::optional<uid_t> peerUser(const SocketEnd& peer, const SocketEnd& own) {
    return userInTables([&](const std::string& table) { return peerUserIn(table, peer, own); });
}

std::optional<uid_t> listeningUser(std::uint16_t port) {
    return userInTables([&](const std::string& table) { return listeningUserIn(table, port); });
}

} // namespace vorq::gateway
