#pragma once

#include <QUrl>

namespace horalo {

// Whether anything may be fetched from `url`: over https, or over http from this computer itself.
bool isAllowedUrl(const QUrl& url);

// Whether the answer for `from` may send us to `to`: never to what could not have been asked for in
// the first place, and never from https to http.
bool isAllowedRedirect(const QUrl& from, const QUrl& to);

}  // namespace horalo
