#include "desktop/kwin/FakeInput.h"

#include <chrono>
#include <stdexcept>

#include "desktop/session/WaylandSession.h"

namespace kestrelbay::desktop {

FakeInput::FakeInput(WaylandSession &session) {
    const Command command = session.command(session.home().path(QLatin1String(kProgram)), {});
    process_.setProcessEnvironment(session.environment());
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(command.program, command.arguments);
    awaitAnswer();
}

FakeInput::~FakeInput() {
    process_.kill();
    process_.waitForFinished();
}

void FakeInput::awaitAnswer() {
    constexpr std::chrono::milliseconds kPatience{10'000};
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(static_cast<int>(kPatience.count())))
            throw std::runtime_error("KWin takes no keys from " + process_.program().toStdString());
    }
    (void)process_.readLine();
}

void FakeInput::send(char what, std::uint8_t xKeycode) {
    constexpr int kFirstOfX = 8;
    process_.write(what + QByteArray::number(xKeycode - kFirstOfX) + '\n');
    awaitAnswer();
}

void FakeInput::press(std::uint8_t xKeycode) {
    send('+', xKeycode);
}

void FakeInput::release(std::uint8_t xKeycode) {
    send('-', xKeycode);
}

}  // namespace kestrelbay::desktop
