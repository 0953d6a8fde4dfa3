#pragma once

#include <curl/curl.h>

namespace vorq {

/// libcurl, loaded at its first use: with the libraries that it needs, it would be a quarter of
/// what the program loads at its start. The functions are those of the same names. Main thread
/// only.
struct LibCurl {
    decltype(&curl_global_init) globalInit;
    decltype(&curl_easy_init) easyInit;
    decltype(&curl_easy_cleanup) easyCleanup;
    decltype(&curl_easy_setopt) easySetopt;
    decltype(&curl_easy_getinfo) easyGetinfo;
    decltype(&curl_easy_pause) easyPause;
    decltype(&curl_easy_strerror) easyStrerror;
    decltype(&curl_multi_init) multiInit;
    decltype(&curl_multi_cleanup) multiCleanup;
    decltype(&curl_multi_setopt) multiSetopt;
    decltype(&curl_multi_add_handle) multiAddHandle;
    decltype(&curl_multi_remove_handle) multiRemoveHandle;
    decltype(&curl_multi_socket_action) multiSocketAction;
    decltype(&curl_multi_info_read) multiInfoRead;
    decltype(&curl_slist_append) slistAppend;
    decltype(&curl_slist_free_all) slistFreeAll;

    /// Throws TransferError if it is not installed.
    static const LibCurl& get();
};

} // namespace vorq
