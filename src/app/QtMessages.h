#pragma once

namespace kestrelbay {

class SystemLog;

/// Sends what Qt itself has to say to the system log, where the user looks, until
/// the object goes.
class QtMessages {
public:
    explicit QtMessages(SystemLog &log);
    ~QtMessages();
    QtMessages(const QtMessages &) = delete;
    QtMessages &operator=(const QtMessages &) = delete;
};

}  // namespace kestrelbay
