#pragma once

#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <stop_token>

namespace vorq {

/// Where a selection is, in screen coordinates.
struct TrackedPlacement {
    /// The strip to set something beside the selection.
    QRectF screenFrame;
    /// The centre of the selection.
    QPointF clickPoint;

    bool operator==(const TrackedPlacement&) const = default;
};

/// What a look at an application's selection found.
struct SelectionSight {
    /// Untrimmed. "" if the application said that nothing is selected; blank it never is.
    QString text;
    /// Nothing if its place is not known.
    std::optional<TrackedPlacement> placement;

    bool operator==(const SelectionSight&) const = default;
};

/// Looks at the selection of an application. A look ends soon whatever the application does, and
/// takes neither focus nor clipboard.
class SelectionLooker {
  public:
    SelectionLooker() = default;
    SelectionLooker(const SelectionLooker&) = delete;
    SelectionLooker& operator=(const SelectionLooker&) = delete;
    virtual ~SelectionLooker() = default;

    /// Nothing if the application did not answer in time or must not be asked. The seed is where
    /// the mouse was, in screen coordinates.
    virtual QCoro::Task<std::optional<SelectionSight>> look(std::optional<ProcessId> source,
                                                            QPointF seed, std::stop_token stop) = 0;
};

/// Sees nothing.
class NoSelectionLooker final : public SelectionLooker {
  public:
    QCoro::Task<std::optional<SelectionSight>> look(std::optional<ProcessId>, QPointF,
                                                    std::stop_token) override {
        co_return std::nullopt;
    }
};

} // namespace vorq
