// The manual as a page for the browser.
#pragma once

#include <QUrl>
#include <optional>

namespace mainwindow {

// The page beside the program, in the folder `Morvenly.manual`, or where a package puts it, in
// share/doc/morvenly/html; none if neither is there.
std::optional<QUrl> ManualPage();

}  // namespace mainwindow
