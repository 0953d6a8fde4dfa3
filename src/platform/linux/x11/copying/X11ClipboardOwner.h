#pragma once

#include "platform/linux/x11/copying/X11PieceTransfers.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace vorq {

/// Sees who writes to a selection of an X server, such as the CLIPBOARD, and hands out contents of
/// our own as its owner. One thread at a time, which calls `handleEvents()` whenever there is
/// something to read.
class X11ClipboardOwner {
  public:
    using Told = std::function<void(const Pasteboard::Change&)>;

    using Taken = std::function<void(ProcessId)>;

    /// Tells of each write, and of each process that is given something written here, on the thread
    /// of whoever calls it.
    X11ClipboardOwner(const char* selection, Told told, Taken taken);

    [[nodiscard]] bool isUsable() const { return m_window != 0 && m_x11.isUsable(); }
    [[nodiscard]] int descriptor() const;

    /// Answers whoever asks. Returns whether somebody may still take pieces.
    bool handleEvents();

    /// As Pasteboard::write().
    std::optional<std::uint64_t> write(PasteboardContents contents, std::uint64_t over);

    /// Asks a clipboard manager to keep what is handed out here; false if nothing is, or there is
    /// no manager.
    bool beginHandover();
    [[nodiscard]] bool isHandedOver() const { return m_isHandedOver; }

  private:
    using Atom = X11Connection::Atom;

    struct Served {
        Atom name = 0;
        Atom type = 0;
        PasteboardForm form;
    };

    void handle(const xcb_generic_event_t& event);
    void noticeOwner(X11Connection::Window owner);
    void answer(const xcb_selection_request_event_t& request);
    bool give(const xcb_selection_request_event_t& request, Atom target, Atom property);
    bool giveSeveral(const xcb_selection_request_event_t& request, Atom property);
    void giveNumbers(X11Connection::Window window, Atom property, Atom type,
                     const std::vector<std::uint32_t>& numbers) const;
    [[nodiscard]] std::vector<Served> prepared(PasteboardContents contents) const;
    [[nodiscard]] X11Connection::Window ownerOf(Atom selection) const;
    [[nodiscard]] std::uint32_t serverTime();
    void drain();
    bool handleQueued();

    X11Connection m_x11;
    X11PieceTransfers m_transfers{m_x11};
    Told m_told;
    Taken m_taken;
    X11Connection::Window m_window = 0;
    std::uint8_t m_fixesEvent = 0; // of a new owner
    Atom m_clipboard;
    Atom m_manager;
    Atom m_targets;
    Atom m_timestamp;
    Atom m_multiple;
    Atom m_atomPair;
    Atom m_scratch;
    Pasteboard::Change m_change;
    std::optional<std::vector<Served>> m_served; // nothing unless this is the owner
    std::uint32_t m_ownedSince = 0;              // by the server's time
    std::optional<std::uint32_t> m_seenTime;
    bool m_isHandedOver = false;
};

} // namespace vorq
