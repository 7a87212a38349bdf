#include "app/QtMessages.h"

#include <QtGlobal>

#include "platform/SystemLog.h"

namespace kestrelbay {

namespace {

// Qt's handler is a plain function without user data.
SystemLog *receiver = nullptr;

void forward(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message) {
    const bool plain = type == QtDebugMsg || type == QtInfoMsg;
    receiver->write(
        (plain ? QStringLiteral("KestrelBay: ") : QStringLiteral("KestrelBay [WARN] ")) + message);
}

}  // namespace

QtMessages::QtMessages(SystemLog &log) {
    receiver = &log;
    qInstallMessageHandler(forward);
}

QtMessages::~QtMessages() {
    qInstallMessageHandler(nullptr);
    receiver = nullptr;
}

}  // namespace kestrelbay
