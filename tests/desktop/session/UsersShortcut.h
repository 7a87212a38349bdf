#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>

namespace kestrelbay::desktop {

/// A key that the user of a session has bound to a program in the desktop's settings.
struct UsersShortcut {
    /// One word, by which nothing else is called.
    QString name;
    /// On the key beside Super, a capital one.
    QChar letter;
    /// As the desktop takes it.
    QByteArray command;
};

}  // namespace kestrelbay::desktop
