#pragma once

#include "platform/linux/atspi/AtSpiBus.h"

#include <map>
#include <optional>
#include <stop_token>
#include <tuple>
#include <vector>

namespace vorq {

/// What a walk through an application needs of each element, asked for many elements at once: those
/// that were announced wait until the first of them is needed.
class AtSpiWalk {
  public:
    struct Facts {
        /// Nothing for an element without text.
        std::optional<std::int32_t> selections;
        std::optional<std::vector<AtSpiRef>> children;
    };

    AtSpiWalk(AtSpiBus& bus, std::stop_token stop) : m_bus(bus), m_stop(std::move(stop)) {}

    void announce(const AtSpiRef& element) { m_pending.push_back(element); }
    [[nodiscard]] const Facts& facts(const AtSpiRef& element);

  private:
    struct Less {
        bool operator()(const AtSpiRef& a, const AtSpiRef& b) const {
            return std::tie(a.service, a.path) < std::tie(b.service, b.path);
        }
    };

    void lookAt(const std::vector<AtSpiRef>& elements);

    AtSpiBus& m_bus;
    std::stop_token m_stop;
    std::vector<AtSpiRef> m_pending;
    std::map<AtSpiRef, Facts, Less> m_facts;
};

} // namespace vorq
