#include "platform/linux/desktop/SyslogLog.h"

#include <poll.h>
#include <syslog.h>
#include <unistd.h>

#include <QByteArray>

namespace kestrelbay {

namespace {

QByteArray oneLine(const QString &line) {
    QString result;
    result.reserve(line.size());
    for (const QChar c : line) {
        const QChar::Category category = c.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            result += QStringLiteral("\\u%1").arg(ushort{c.unicode()}, 4, 16, QLatin1Char('0'));
        else
            result += c;
    }
    return result.toUtf8();
}

void writeToTerminal(QByteArray text) {
    if (::isatty(STDERR_FILENO) == 0)
        return;
    pollfd terminal{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
    if (::poll(&terminal, 1, 0) != 1 || (terminal.revents & POLLOUT) == 0)
        return;
    // In one piece, so that lines from several threads do not mix.
    text += '\n';
    [[maybe_unused]] const ssize_t written =
        ::write(STDERR_FILENO, text.constData(), static_cast<std::size_t>(text.size()));
}

}  // namespace

SyslogLog::SyslogLog() {
    ::openlog("kestrelbay", LOG_PID, LOG_USER);
}

SyslogLog::~SyslogLog() {
    ::closelog();
}

void SyslogLog::write(const QString &line) {
    const QByteArray text = oneLine(line);
    const bool warning = line.startsWith(QLatin1String("KestrelBay [WARN]"));
    ::syslog(warning ? LOG_WARNING : LOG_INFO, "%s", text.constData());
    writeToTerminal(text);
}

}  // namespace kestrelbay
