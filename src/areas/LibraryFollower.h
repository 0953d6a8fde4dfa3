#pragma once

#include "areas/RecordList.h"
#include "library/store/LibraryFile.h"
#include "support/async/BlockingThread.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// Takes into a list what other programs write to its file. The file is read and merged on a thread
/// of its own, so that a large one holds nobody up. Main thread only.
template<typename Record>
class LibraryFollower {
  public:
    using List = std::vector<Record>;
    /// Puts a list into the order in which it is shown; on any thread.
    using Order = List (*)(List list);
    /// Called after each look at the file, with the list if it has changed, in its order.
    using Handler = std::function<void(std::optional<List> changed)>;

    /// File and list must outlive it.
    LibraryFollower(LibraryFile<Record>& file, const RecordList<Record>& list, Order order,
                    Handler handle)
        : m_file(file), m_list(list), m_order(order), m_handle(std::move(handle)) {
        QObject::connect(&list, &RecordListModel::changed, &m_receiver,
                         [this] { m_isListChanged = true; });
    }

    /// The file may have changed.
    void look() {
        if (m_isLooking)
            m_isAskedAgain = true;
        else
            begin();
    }

  private:
    using Look = LibraryLook<Record>;

    // Who works on the list all the time is held up once rather than never told.
    static constexpr int mostLooksInVain = 3;

    void begin() {
        std::optional<Look> look = m_file.look(m_list.records());
        if (!look) return m_handle(std::nullopt);
        m_isLooking = true;
        m_isListChanged = false;
        (void)follow(this, *std::move(look));
    }

    static QCoro::Task<> follow(LibraryFollower* self, Look look) {
        const QPointer<QObject> alive(&self->m_receiver);
        auto merge = [look = std::move(look), order = self->m_order] {
            typename Look::Found found = look.run();
            found.merged = order(std::move(found.merged));
            return found;
        };
        typename Look::Found found = co_await self->m_thread.run(std::move(merge), {});
        if (alive) self->end(std::move(found));
    }

    void end(typename Look::Found found) {
        m_isLooking = false;
        if (!m_isListChanged && m_file.isCurrent(found)) {
            m_looksInVain = 0;
            m_handle(m_file.takeIn(std::move(found)));
        } else if (++m_looksInVain < mostLooksInVain) {
            m_isAskedAgain = true;
        } else {
            m_looksInVain = 0;
            std::optional<List> list = m_file.takeIn(m_list.records());
            m_handle(list ? std::optional(m_order(*std::move(list))) : std::nullopt);
        }
        if (std::exchange(m_isAskedAgain, false)) look();
    }

    LibraryFile<Record>& m_file;
    const RecordList<Record>& m_list;
    Order m_order;
    Handler m_handle;
    bool m_isLooking = false;
    bool m_isAskedAgain = false;
    bool m_isListChanged = false; // since the look began
    int m_looksInVain = 0;
    QObject m_receiver;
    BlockingThread m_thread{BlockingThread::AtEnd::Finish}; // waits when it goes, so it is last
};

} // namespace vorq
