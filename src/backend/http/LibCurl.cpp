#include "backend/http/LibCurl.h"

#include "backend/http/Errors.h"

#include <QLibrary>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

template<typename Function>
void resolve(QLibrary& library, Function& function, const char* name) {
    function = reinterpret_cast<Function>(library.resolve(name));
    if (!function) throw TransferError(u"The library libcurl is missing or too old."_s);
}

LibCurl loaded() {
    // The version of its interface, which its headers stand for as well.
    QLibrary library(u"curl"_s, 4);
    LibCurl curl{};
    resolve(library, curl.globalInit, "curl_global_init");
    resolve(library, curl.easyInit, "curl_easy_init");
    resolve(library, curl.easyCleanup, "curl_easy_cleanup");
    resolve(library, curl.easySetopt, "curl_easy_setopt");
    resolve(library, curl.easyGetinfo, "curl_easy_getinfo");
    resolve(library, curl.easyPause, "curl_easy_pause");
    resolve(library, curl.easyStrerror, "curl_easy_strerror");
    resolve(library, curl.multiInit, "curl_multi_init");
    resolve(library, curl.multiCleanup, "curl_multi_cleanup");
    resolve(library, curl.multiSetopt, "curl_multi_setopt");
    resolve(library, curl.multiAddHandle, "curl_multi_add_handle");
    resolve(library, curl.multiRemoveHandle, "curl_multi_remove_handle");
    resolve(library, curl.multiSocketAction, "curl_multi_socket_action");
    resolve(library, curl.multiInfoRead, "curl_multi_info_read");
    resolve(library, curl.slistAppend, "curl_slist_append");
    resolve(library, curl.slistFreeAll, "curl_slist_free_all");
    return curl;
}

} // namespace

const LibCurl& LibCurl::get() {
    static const LibCurl curl = loaded();
    return curl;
}

} // namespace vorq
