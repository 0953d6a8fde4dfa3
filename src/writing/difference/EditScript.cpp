#include "writing/difference/EditScript.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

namespace vorq {
namespace {

using Index = std::ptrdiff_t;

// The steps of a search, in either direction, before it is ended early: for so many elements as two
// texts of some pages have, and for whatever is longer.
constexpr Index mostSteps = 256;
constexpr Index fewestSteps = 16;
constexpr Index mostWork = 2'500'000; // steps times elements

Index stepsFor(std::size_t elements) {
    return std::clamp(mostWork / (static_cast<Index>(elements) + 1), fewestSteps, mostSteps);
}

// A part of both sequences.
struct Box {
    Index left = 0;
    Index right = 0;
    Index top = 0;
    Index bottom = 0;
};

// Where to cut a box in two.
struct Cut {
    Index x = 0;
    Index y = 0;
};

class Search {
  public:
    Search(std::span<const std::uint32_t> before, std::span<const std::uint32_t> after)
        : m_before(before),
          m_after(after),
          m_steps(stepsFor(before.size() + after.size())),
          m_origin(static_cast<Index>(after.size()) + 1),
          m_forward(before.size() + after.size() + 3),
          m_backward(m_forward.size()) {
        m_script.isKeptOfOld.resize(before.size());
        m_script.isKeptOfNew.resize(after.size());
    }

    EditScript run() {
        m_boxes.push_back({.left = 0,
                           .right = static_cast<Index>(m_before.size()),
                           .top = 0,
                           .bottom = static_cast<Index>(m_after.size())});
        while (!m_boxes.empty()) {
            Box box = m_boxes.back();
            m_boxes.pop_back();
            shrink(box);
            // What is left of one sequence alone was removed or added.
            if (box.left == box.right || box.top == box.bottom) continue;
            const Cut cut = middleOf(box);
            const bool isCorner = (cut.x == box.left && cut.y == box.top) ||
                                  (cut.x == box.right && cut.y == box.bottom);
            if (isCorner) continue;
            m_boxes.push_back({box.left, cut.x, box.top, cut.y});
            m_boxes.push_back({cut.x, box.right, cut.y, box.bottom});
        }
        return std::move(m_script);
    }

  private:
    [[nodiscard]] bool isSame(Index x, Index y) const {
        return m_before[static_cast<std::size_t>(x)] == m_after[static_cast<std::size_t>(y)];
    }
    // Diagonals count x - y, which may be negative.
    Index& forward(Index diagonal) {
        return m_forward[static_cast<std::size_t>(diagonal + m_origin)];
    }
    Index& backward(Index diagonal) {
        return m_backward[static_cast<std::size_t>(diagonal + m_origin)];
    }

    void keep(Index x, Index y) {
        m_script.isKeptOfOld[static_cast<std::size_t>(x)] = true;
        m_script.isKeptOfNew[static_cast<std::size_t>(y)] = true;
    }

    // Takes off, and keeps, what both parts begin and end with.
    void shrink(Box& box) {
        for (; box.left < box.right && box.top < box.bottom && isSame(box.left, box.top);
             ++box.left, ++box.top)
            keep(box.left, box.top);
        for (;
             box.left < box.right && box.top < box.bottom && isSame(box.right - 1, box.bottom - 1);
             --box.right, --box.bottom)
            keep(box.right - 1, box.bottom - 1);
    }

    // The diagonals that a search from one corner has reached.
    struct Reach {
        Index low = 0;
        Index high = 0;

        // One more to either side, unless that is out of the box; then one less, so that no
        // diagonal is met twice in a row.
        void widen(Index lowest, Index highest) {
            low = low > lowest ? low - 1 : low + 1;
            high = high < highest ? high + 1 : high - 1;
        }
    };

    // A point on a shortest path through the box, or on a good one; neither corner of it. The box
    // holds something of both sequences, and they neither begin nor end alike.
    Cut middleOf(const Box& box) {
        const Index lowest = box.left - box.bottom;
        const Index highest = box.right - box.top;
        const Index first = box.left - box.top;
        const Index last = box.right - box.bottom;
        const bool isOdd = ((first - last) & 1) != 0;
        Reach ahead{.low = first, .high = first};
        Reach back{.low = last, .high = last};
        forward(first) = box.left;
        backward(last) = box.right;
        for (Index step = 1;; ++step) {
            const auto met = goAhead(box, ahead, lowest, highest, isOdd ? &back : nullptr);
            if (met) return *met;
            const auto metBack = goBack(box, back, lowest, highest, isOdd ? nullptr : &ahead);
            if (metBack) return *metBack;
            if (step >= m_steps) return farthest(box, ahead, back);
        }
    }

    std::optional<Cut> goAhead(const Box& box, Reach& reach, Index lowest, Index highest,
                               const Reach* other) {
        const Reach before = reach;
        reach.widen(lowest, highest);
        for (Index diagonal = reach.high; diagonal >= reach.low; diagonal -= 2) {
            const Index down = diagonal < before.high ? forward(diagonal + 1) : -1;
            const Index across = diagonal > before.low ? forward(diagonal - 1) + 1 : -1;
            Index x = std::max(down, across);
            Index y = x - diagonal;
            while (x < box.right && y < box.bottom && isSame(x, y)) {
                ++x;
                ++y;
            }
            forward(diagonal) = x;
            const bool isMet = other && diagonal >= other->low && diagonal <= other->high &&
                               ((diagonal - other->low) & 1) == 0 && backward(diagonal) <= x;
            if (isMet) return Cut{.x = x, .y = y};
        }
        return std::nullopt;
    }

    std::optional<Cut> goBack(const Box& box, Reach& reach, Index lowest, Index highest,
                              const Reach* other) {
        const Reach before = reach;
        reach.widen(lowest, highest);
        constexpr Index nowhere = std::numeric_limits<Index>::max();
        for (Index diagonal = reach.high; diagonal >= reach.low; diagonal -= 2) {
            const Index up = diagonal > before.low ? backward(diagonal - 1) : nowhere;
            const Index across = diagonal < before.high ? backward(diagonal + 1) - 1 : nowhere;
            Index x = std::min(up, across);
            Index y = x - diagonal;
            while (x > box.left && y > box.top && isSame(x - 1, y - 1)) {
                --x;
                --y;
            }
            backward(diagonal) = x;
            const bool isMet = other && diagonal >= other->low && diagonal <= other->high &&
                               ((diagonal - other->low) & 1) == 0 && x <= forward(diagonal);
            if (isMet) return Cut{.x = x, .y = y};
        }
        return std::nullopt;
    }

    // Of all that was reached, what is farthest from the corner where its search began.
    Cut farthest(const Box& box, const Reach& ahead, const Reach& back) {
        Cut best;
        Index most = -1;
        const auto consider = [&](Index x, Index diagonal, bool isAhead) {
            x = std::clamp(x, box.left, box.right);
            const Index y = std::clamp(x - diagonal, box.top, box.bottom);
            x = std::clamp(y + diagonal, box.left, box.right);
            const Index way =
                isAhead ? (x - box.left) + (y - box.top) : (box.right - x) + (box.bottom - y);
            if (way <= most) return;
            most = way;
            best = {.x = x, .y = y};
        };
        for (Index diagonal = ahead.low; diagonal <= ahead.high; diagonal += 2)
            consider(forward(diagonal), diagonal, true);
        for (Index diagonal = back.low; diagonal <= back.high; diagonal += 2)
            consider(backward(diagonal), diagonal, false);
        return best;
    }

    std::span<const std::uint32_t> m_before;
    std::span<const std::uint32_t> m_after;
    Index m_steps;
    Index m_origin;
    std::vector<Index> m_forward;  // by diagonal: how far along the old sequence
    std::vector<Index> m_backward; // the same from the end
    std::vector<Box> m_boxes;
    EditScript m_script;
};

// The elements of a sequence that occur in the other one at all, and where they stand. The rest is
// common to no script.
struct Shared {
    std::vector<std::uint32_t> elements;
    std::vector<std::size_t> places;
};

Shared sharedOf(std::span<const std::uint32_t> sequence, std::span<const std::uint32_t> other) {
    const std::unordered_set<std::uint32_t> known(other.begin(), other.end());
    Shared shared;
    for (std::size_t place = 0; place < sequence.size(); ++place) {
        if (!known.contains(sequence[place])) continue;
        shared.elements.push_back(sequence[place]);
        shared.places.push_back(place);
    }
    return shared;
}

std::vector<bool> spread(const std::vector<bool>& isKept, const Shared& shared, std::size_t size) {
    std::vector<bool> result(size);
    for (std::size_t i = 0; i < isKept.size(); ++i)
        if (isKept[i]) result[shared.places[i]] = true;
    return result;
}

} // namespace

EditScript editScript(std::span<const std::uint32_t> before, std::span<const std::uint32_t> after) {
    const Shared olds = sharedOf(before, after);
    const Shared news = sharedOf(after, before);
    const EditScript found = Search(olds.elements, news.elements).run();
    return {.isKeptOfOld = spread(found.isKeptOfOld, olds, before.size()),
            .isKeptOfNew = spread(found.isKeptOfNew, news, after.size())};
}

} // namespace vorq
