#include "platform/linux/x11/copying/X11ClipboardReading.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionRequest.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Failure = X11SelectionRequest::Failure;

// What is asked for by these is no form of the contents; the last three have the owner do
// something.
constexpr std::array noForms{
    QByteArrayView("TARGETS"),         QByteArrayView("MULTIPLE"),
    QByteArrayView("TIMESTAMP"),       QByteArrayView("SAVE_TARGETS"),
    QByteArrayView("DELETE"),          QByteArrayView("INSERT_SELECTION"),
    QByteArrayView("INSERT_PROPERTY"),
};

// Password managers say by this that nobody should keep what they copied.
constexpr QByteArrayView secretMark("x-kde-passwordManagerHint");

QString reasonOf(Failure failure) {
    return failure == Failure::TooLong
               ? u"the clipboard holds more than can be given back"_s
               : u"the owner of the clipboard does not hand out all of it in time"_s;
}

std::vector<X11Connection::Atom> atomsIn(const QByteArray& bytes) {
    std::vector<X11Connection::Atom> atoms(static_cast<std::size_t>(bytes.size()) / 4);
    if (!atoms.empty()) std::memcpy(atoms.data(), bytes.constData(), atoms.size() * 4);
    return atoms;
}

} // namespace

X11ClipboardReading::X11ClipboardReading(X11Connection& x11, const char* selection,
                                         std::stop_token stop)
    : m_x11(x11), m_clipboard(x11.atom(selection)), m_stop(std::move(stop)) {}

X11Connection::Window X11ClipboardReading::owner() const {
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_x11.get(), xcb_get_selection_owner(m_x11.get(), m_clipboard), nullptr));
    return reply ? reply->owner : XCB_WINDOW_NONE;
}

// One that is asked right after it has become the owner may refuse and give it a moment later.
template<typename Given>
static auto convertTwice(X11SelectionRequest& request, Given form, qsizetype mostBytes) {
    auto converted = request.convert(form, mostBytes);
    if (!converted && converted.error() == Failure::Refused)
        converted = request.convert(form, mostBytes);
    return converted;
}

QByteArray X11ClipboardReading::nameOf(Atom atom) const {
    const X11Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_x11.get(), xcb_get_atom_name(m_x11.get(), atom), nullptr));
    if (!reply) return {};
    return QByteArray(xcb_get_atom_name_name(reply.get()),
                      xcb_get_atom_name_name_length(reply.get()));
}

std::vector<X11ClipboardReading::Offer> X11ClipboardReading::named(std::vector<Atom> atoms) const {
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    cookies.reserve(atoms.size());
    for (const Atom atom : atoms)
        cookies.push_back(xcb_get_atom_name(m_x11.get(), atom));
    std::vector<Offer> offers;
    for (std::size_t at = 0; at < atoms.size(); ++at) {
        const X11Reply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(m_x11.get(), cookies[at], nullptr));
        if (!reply) continue;
        const QByteArray name(xcb_get_atom_name_name(reply.get()),
                              xcb_get_atom_name_name_length(reply.get()));
        const bool isKnown = std::ranges::find(offers, name, &Offer::name) != offers.end();
        if (!isKnown && std::ranges::find(noForms, name) == noForms.end())
            offers.push_back({.atom = atoms[at], .name = name});
    }
    return offers;
}

X11ClipboardReading::Offers X11ClipboardReading::offers() {
    X11SelectionRequest request(m_x11, m_clipboard, m_stop);
    constexpr qsizetype mostNames = Pasteboard::mostForms * qsizetype{sizeof(Atom)};
    const auto targets = convertTwice(request, m_x11.atom("TARGETS"), mostNames);
    if (targets) return named(atomsIn(targets->bytes));
    if (targets.error() != Failure::Refused) return std::unexpected(reasonOf(targets.error()));
    // Some old programs hand out texts without saying so.
    return named({m_x11.atom("UTF8_STRING"), XCB_ATOM_STRING});
}

bool X11ClipboardReading::isSecret(const std::vector<Offer>& offers) {
    return std::ranges::find(offers, secretMark, &Offer::name) != offers.end();
}

Pasteboard::Contents X11ClipboardReading::formsOf(const std::vector<Offer>& offers) {
    X11SelectionRequest request(m_x11, m_clipboard, m_stop);
    PasteboardContents contents;
    qsizetype left = Pasteboard::mostBytes;
    for (const Offer& offer : offers) {
        auto converted = convertTwice(request, offer.atom, left);
        if (!converted && converted.error() == Failure::Refused) continue;
        if (!converted) return std::unexpected(reasonOf(converted.error()));
        // Without a type there is nothing.
        if (converted->type == 0) continue;
        left -= converted->bytes.size();
        contents.push_back(
            {.name = offer.name,
             .bytes = std::move(converted->bytes),
             .type = converted->type == offer.atom ? offer.name : nameOf(converted->type),
             .unit = converted->unit});
    }
    return contents;
}

Pasteboard::Contents X11ClipboardReading::contents() {
    if (!m_x11.isUsable()) return std::unexpected(u"no X server answers"_s);
    const X11Connection::Window before = owner();
    if (before == XCB_WINDOW_NONE) return PasteboardContents();
    const Offers offered = offers();
    if (!offered) return std::unexpected(offered.error());
    if (isSecret(*offered)) return std::unexpected(u"the clipboard holds a secret"_s);
    Contents contents = formsOf(*offered);
    if (contents && owner() != before)
        return std::unexpected(u"the clipboard was written meanwhile"_s);
    return contents;
}

std::optional<QList<QByteArray>> X11ClipboardReading::formNames() {
    if (!m_x11.isUsable()) return std::nullopt;
    QList<QByteArray> names;
    if (owner() == XCB_WINDOW_NONE) return names;
    const Offers offered = offers();
    if (!offered) return std::nullopt;
    for (const Offer& offer : *offered)
        names += offer.name;
    return names;
}

std::optional<QByteArray> X11ClipboardReading::form(const QByteArray& name) {
    if (!m_x11.isUsable()) return std::nullopt;
    X11SelectionRequest request(m_x11, m_clipboard, m_stop);
    auto converted =
        convertTwice(request, m_x11.atom(name.constData()), qsizetype{Pasteboard::mostBytes});
    if (!converted || converted->type == 0) return std::nullopt;
    return std::move(converted->bytes);
}

QString X11ClipboardReading::text() {
    if (!m_x11.isUsable()) return {};
    // A secret is not even asked for.
    const Offers offered = offers();
    if (!offered || isSecret(*offered)) return {};
    X11SelectionRequest request(m_x11, m_clipboard, m_stop);
    const auto text = convertTwice(request, m_x11.atom("UTF8_STRING"), Pasteboard::longestText);
    if (text) return QString::fromUtf8(text->bytes);
    if (text.error() != Failure::Refused) return {};
    const auto latin = convertTwice(request, Atom{XCB_ATOM_STRING}, Pasteboard::longestText);
    return latin ? QString::fromLatin1(latin->bytes) : QString();
}

} // namespace vorq
