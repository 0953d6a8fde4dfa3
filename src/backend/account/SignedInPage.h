#pragma once

#include <QByteArrayView>

namespace vorq {

/// What the browser shows once it has come back: an HTML document in UTF-8 that needs nothing else.
extern const QByteArrayView signedInPage;

} // namespace vorq
