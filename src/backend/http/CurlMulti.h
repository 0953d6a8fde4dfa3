#pragma once

#include "backend/http/LibCurl.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <unordered_map>
#include <unordered_set>

class QSocketNotifier;

namespace vorq {

class CurlExchange;

/// Runs transfers of libcurl on the event loop. Its timer is libcurl's own, for retries of
/// connections and the like.
class CurlMulti {
  public:
    CurlMulti();
    CurlMulti(const CurlMulti&) = delete;
    CurlMulti& operator=(const CurlMulti&) = delete;
    /// Tells the exchanges that they have ended.
    ~CurlMulti();

    /// Starts the transfer of an exchange, which tells its own handle's private data to be itself.
    /// Nothing is called back before the event loop turns.
    void add(CurlExchange& exchange);
    /// Ends the transfer at once. An exchange that is not here is left alone.
    void remove(CurlExchange& exchange);

  private:
    struct Watch {
        QSocketNotifier* readable;
        QSocketNotifier* writable;
    };
    struct Release {
        void operator()(CURLM* multi) const { LibCurl::get().multiCleanup(multi); }
    };

    static int onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void*);
    static int onTimer(CURLM*, long milliseconds, void* self);

    void watch(curl_socket_t socket, int what, CurlExchange* exchange);
    QSocketNotifier* notifier(curl_socket_t socket, int direction, CurlExchange* exchange);
    void forget(curl_socket_t socket);
    void drive(curl_socket_t socket, int events);
    void takeFinished();

    QObject m_notifiers; // parent of all notifiers
    QTimer m_timer;
    std::unordered_map<curl_socket_t, Watch> m_watches;
    std::unordered_set<CurlExchange*> m_exchanges;
    std::unique_ptr<CURLM, Release> m_multi;
};

} // namespace vorq
