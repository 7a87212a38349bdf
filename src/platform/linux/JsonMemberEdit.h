#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

namespace kestrelbay {

/// The text of a JSON object with one member set: the value of the key replaced
/// where it stands (of several with that key the last, which is the one that
/// readers see), or a new member added at the end. Every other byte stays, so
/// that numbers, order and layout survive a reader that would round or sort them.
/// The text must be one that QJsonDocument reads as an object.
[[nodiscard]] QByteArray withMember(const QByteArray &object, const QString &key,
                                    const QJsonValue &value);

}  // namespace kestrelbay
