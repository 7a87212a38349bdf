#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

namespace kestrelbay::testing {

/// A compositor without a screen that has a seat, with a keyboard, and
/// wlr-foreign-toplevel-management. Windows are
/// known by their app id. What is asked of it, it does; each call has taken effect when it returns.
class FakeCompositor {
public:
    enum class Minimizing { Does, Ignores };

    explicit FakeCompositor(Minimizing minimizing = Minimizing::Does);
    ~FakeCompositor();
    FakeCompositor(const FakeCompositor &) = delete;
    FakeCompositor &operator=(const FakeCompositor &) = delete;

    [[nodiscard]] QString socketPath() const;

    /// A window that gets the focus.
    void open(const QByteArray &appId);
    void close(const QByteArray &appId);
    void focus(const QByteArray &appId);
    void setParent(const QByteArray &appId, const QByteArray &parent);
    void setTitle(const QByteArray &appId, const QByteArray &title);
    /// The keyboard's, in XKB's format.
    void setKeymap(const QByteArray &text);
    /// Nothing is read or sent any more until the end.
    void hang();
    /// Hangs up on all clients, and is there for new ones.
    void hangUp();

    /// What it was asked for since the last call, such as "activate a".
    [[nodiscard]] QByteArrayList takeRequests();

private:
    struct Server;

    /// On the thread of the server.
    void run(const std::function<void()> &work);

    const std::unique_ptr<Server> server_;
};

}  // namespace kestrelbay::testing
