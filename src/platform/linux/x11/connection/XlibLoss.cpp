#include "platform/linux/x11/connection/XlibLoss.h"

#include <utility>

#include <QLibrary>

namespace kestrelbay::x11 {

namespace {

/// Of Xlib's type, but for the connection, of which nothing is asked here.
using Handler = int (*)(void *connection);

/// For a function that is handed nothing of ours.
std::function<void()> &lossHandler() {
    static std::function<void()> handler;
    return handler;
}

int tellOfLoss(void * /*connection*/) {
    if (const auto &handler = lossHandler())
        handler();
    return 0;
}

}  // namespace

void setXlibLossHandler(std::function<void()> lost) {
    // Qt's plug-in for X has it loaded.
    auto *const setHandler = reinterpret_cast<Handler (*)(Handler)>(
        QLibrary::resolve(QStringLiteral("X11"), 6, "XSetIOErrorHandler"));
    if (setHandler == nullptr)
        return;
    lossHandler() = std::move(lost);
    setHandler(&tellOfLoss);
}

}  // namespace kestrelbay::x11
