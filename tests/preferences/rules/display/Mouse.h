#pragma once

#include <cstdint>
#include <memory>

#include <QPoint>
#include <QString>

struct xcb_connection_t;

namespace kestrelbay::testing {

/// A mouse with a left button, by the XTEST extension. Every call has been processed
/// by the X server when it returns.
class Mouse {
public:
    explicit Mouse(const QString &displayName);
    ~Mouse();

    void moveTo(QPoint place);
    void press();
    void release();

private:
    void send(std::uint8_t type, std::uint8_t detail, QPoint place);

    struct Disconnect {
        void operator()(xcb_connection_t *c) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
};

}  // namespace kestrelbay::testing
