#include "platform/linux/JsonMemberEdit.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace kestrelbay {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// A half-open range of bytes.
struct Range {
    qsizetype begin = 0;
    qsizetype end = 0;
};

/// Walks the members of a well-formed object.
class MemberScanner {
public:
    explicit MemberScanner(const QByteArray &text) : text_(text), at_(text.indexOf('{') + 1) {}

    /// Steps to the next member. False at the closing brace.
    bool next() {
        if (value.end > 0) {
            skipSpace();
            ++at_;  // the comma, or the closing brace
        }
        const qsizetype afterSeparator = at_;
        skipSpace();
        if (peek() != '"') {
            return false;
        }
        indent = {afterSeparator, at_};
        key.begin = at_;
        skipString();
        key.end = at_;
        skipSpace();
        ++at_;  // the colon
        skipSpace();
        value.begin = at_;
        skipValue();
        value.end = at_;
        return true;
    }

    Range indent;  ///< the white space before the key
    Range key;     ///< with its quotes
    Range value;

private:
    [[nodiscard]] char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    [[nodiscard]] bool atEnd() const { return at_ >= text_.size(); }

    void skipSpace() {
        while (isSpace(peek())) {
            ++at_;
        }
    }

    void skipString() {
        ++at_;
        while (!atEnd() && peek() != '"') {
            at_ += peek() == '\\' ? 2 : 1;
        }
        ++at_;
    }

    void skipValue() {
        int depth = 0;
        while (!atEnd()) {
            const char c = peek();
            if (depth == 0 && (c == ',' || c == '}' || isSpace(c))) {
                return;
            }
            if (c == '"') {
                skipString();
            } else {
                depth += (c == '{' || c == '[') ? 1 : 0;
                depth -= (c == '}' || c == ']') ? 1 : 0;
                ++at_;
            }
        }
    }

    const QByteArray &text_;
    qsizetype at_;
};

QByteArray slice(const QByteArray &text, Range range) {
    return text.mid(range.begin, range.end - range.begin);
}

QByteArray encode(const QJsonValue &value) {
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QString decodeKey(const QByteArray &token) {
    return QJsonDocument::fromJson('[' + token + ']').array().at(0).toString();
}

}  // namespace

QByteArray withMember(const QByteArray &object, const QString &key, const QJsonValue &value) {
    MemberScanner scanner(object);
    Range same;
    Range last;
    QByteArray indent("\n    ");
    while (scanner.next()) {
        last = scanner.value;
        indent = slice(object, scanner.indent);
        if (decodeKey(slice(object, scanner.key)) == key) {
            same = scanner.value;
        }
    }

    QByteArray result = object;
    if (same.end > 0) {
        return result.replace(same.begin, same.end - same.begin, encode(value));
    }
    const QByteArray member = indent + encode(key) + ": " + encode(value);
    if (last.end > 0) {
        return result.insert(last.end, ',' + member);
    }
    return result.insert(object.indexOf('{') + 1, member);
}

}  // namespace kestrelbay
