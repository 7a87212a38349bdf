#include "model/RuleJson.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include <QByteArrayView>
#include <QRegularExpression>
#include <nlohmann/json.hpp>

using nlohmann::json;

namespace kestrelbay {

namespace {

/// In the order in which they are written.
enum class Field : std::uint8_t {
    Id,
    AppName,
    AppPath,
    KeyCode,
    ModifierFlags,
    IsEnabled,
    RepeatAction,
    LaunchArguments,
    ArgumentKind,
};

constexpr std::array<std::string_view, 9> kFieldNames{
    "id",        "appName",      "appPath",         "keyCode",      "modifierFlags",
    "isEnabled", "repeatAction", "launchArguments", "argumentKind",
};

/// What one object of the file says, by field; nothing for what no field can be read from.
using Value = std::variant<std::monostate, bool, std::uint64_t, double, QString>;
using Values = std::array<Value, kFieldNames.size()>;

template <typename T>
const T *valueIn(const Values &values, Field field) {
    return std::get_if<T>(&values.at(static_cast<std::size_t>(field)));
}

/// Empty when there is none.
QString textIn(const Values &values, Field field) {
    const auto *const text = valueIn<QString>(values, field);
    return text ? *text : QString();
}

template <std::unsigned_integral Number>
std::optional<Number> numberIn(const Values &values, Field field) {
    constexpr Number kMax = std::numeric_limits<Number>::max();
    if (const auto *const number = valueIn<std::uint64_t>(values, field))
        return *number <= kMax ? std::optional(static_cast<Number>(*number)) : std::nullopt;
    // Other JSON writers may put whole numbers down as 45.0.
    if (const auto *const number = valueIn<double>(values, field)) {
        // 2^bits is exact in a double, whereas kMax may not be.
        const double limit = std::ldexp(1.0, std::numeric_limits<Number>::digits);
        if (*number >= 0 && *number < limit && std::trunc(*number) == *number)
            return static_cast<Number>(*number);
    }
    return std::nullopt;
}

ShortcutRule decodeRule(const Values &values, std::set<QUuid> &madeUpIds) {
    const std::optional<QUuid> id = ruleIdFromText(textIn(values, Field::Id));
    ShortcutRule rule{.id = id ? *id : QUuid::createUuid()};
    if (!id)
        madeUpIds.insert(rule.id);
    rule.appName = textIn(values, Field::AppName);
    rule.appPath = textIn(values, Field::AppPath);
    rule.keyCode = KeyCode{numberIn<std::uint16_t>(values, Field::KeyCode).value_or(0)};
    rule.modifierFlags =
        ModifierFlags(numberIn<std::uint64_t>(values, Field::ModifierFlags).value_or(0));
    if (const auto *const isEnabled = valueIn<bool>(values, Field::IsEnabled))
        rule.isEnabled = *isEnabled;
    rule.repeatAction =
        repeatActionFromRawValue(textIn(values, Field::RepeatAction)).value_or(rule.repeatAction);
    rule.launchArguments = textIn(values, Field::LaunchArguments);
    const auto kind = argumentKindFromRawValue(textIn(values, Field::ArgumentKind));
    rule.argumentKind = kind ? *kind : ShortcutRule::inferKind(rule.launchArguments);
    return rule;
}

/// Takes rules from the text as it is read. A tree of all its values would cost more time
/// and memory than everything else about it.
class RuleReader final : public nlohmann::json_sax<json> {
public:
    /// Of a text that was read to its end.
    [[nodiscard]] std::vector<ShortcutRule> takeRules() { return std::move(rules_); }
    [[nodiscard]] std::set<QUuid> takeMadeUpIds() { return std::move(madeUpIds_); }

    bool null() override { return scalar({}); }
    bool boolean(bool value) override { return scalar(value); }
    /// A negative one.
    bool number_integer(std::int64_t /*value*/) override { return scalar({}); }
    bool number_unsigned(std::uint64_t value) override { return scalar(value); }
    bool number_float(double value, const std::string & /*token*/) override {
        return scalar(value);
    }
    bool string(std::string &value) override {
        return scalar(isWanted() ? QString::fromStdString(value) : QString());
    }
    bool binary(binary_t & /*value*/) override { return false; }

    bool start_object(std::size_t /*elements*/) override {
        if (depth_ == kInFile)
            return false;
        if (depth_ == kInList)
            values_.fill({});
        ++depth_;
        return true;
    }
    bool key(std::string &name) override {
        if (depth_ != kInRule)
            return true;
        const auto *const found = std::ranges::find(kFieldNames, name);
        value_ = found == kFieldNames.end()
                     ? nullptr
                     : &values_.at(static_cast<std::size_t>(found - kFieldNames.begin()));
        // Of two values the later one counts, also one that cannot be read.
        if (value_)
            *value_ = {};
        return true;
    }
    bool end_object() override {
        if (--depth_ == kInList)
            rules_.push_back(decodeRule(values_, madeUpIds_));
        return true;
    }
    bool start_array(std::size_t /*elements*/) override { return depth_++ != kInList; }
    bool end_array() override {
        --depth_;
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string & /*token*/,
                     const nlohmann::detail::exception & /*error*/) override {
        return false;
    }

private:
    /// Values deeper down are of no field.
    static constexpr std::size_t kInFile = 0;
    static constexpr std::size_t kInList = 1;
    static constexpr std::size_t kInRule = 2;

    [[nodiscard]] bool isWanted() const { return depth_ == kInRule && value_; }
    bool scalar(Value value) {
        if (isWanted())
            *value_ = std::move(value);
        return depth_ >= kInRule;
    }

    std::vector<ShortcutRule> rules_;
    std::set<QUuid> madeUpIds_;
    std::size_t depth_ = kInFile;
    Values values_;
    Value *value_ = nullptr;  ///< of the key that was read last
};

std::optional<std::vector<ShortcutRule>> readRules(const QByteArray &text,
                                                   std::set<QUuid> *madeUpIds) {
    RuleReader reader;
    if (!json::sax_parse(text.begin(), text.end(), &reader))
        return std::nullopt;
    if (madeUpIds)
        madeUpIds->merge(reader.takeMadeUpIds());
    return reader.takeRules();
}

/// Is it a number by JSON's rules which no double can hold?
bool isTooLarge(QByteArrayView token) {
    static const QRegularExpression number(
        QStringLiteral(R"(\A-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][+-]?\d+)?\z)"));
    bool isDouble = false;
    static_cast<void>(token.toDouble(&isDouble));
    return !isDouble && number.match(QLatin1StringView(token)).hasMatch();
}

/// The parser gives up on a number too large for a double. Such a number is out
/// of range for every field and must not cost the user the other rules: it is
/// overwritten with null. False when there was none.
bool blankOutHugeNumbers(QByteArray &text) {
    const auto isNumberPart = [](char c) {
        return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
    };
    bool changed = false;
    bool inString = false;
    char *const end = text.data() + text.size();
    for (char *at = text.data(); at != end; ++at) {
        if (*at == '\\' && at + 1 != end) {
            ++at;
        } else if (*at == '"') {
            inString = !inString;
        } else if (!inString && (*at == '-' || (*at >= '0' && *at <= '9'))) {
            char *const tokenEnd = std::find_if_not(at, end, isNumberPart);
            constexpr std::string_view kNull = "null";
            if (tokenEnd - at > std::ssize(kNull) && isTooLarge({at, tokenEnd})) {
                std::fill(std::copy(kNull.begin(), kNull.end(), at), tokenEnd, ' ');
                changed = true;
            }
            at = tokenEnd - 1;
        }
    }
    return changed;
}

/// Only the escapes are the library's, for the texts that need them.
void appendText(QByteArray &out, const QByteArray &text) {
    const bool isPlain = std::ranges::all_of(text, [](char c) {
        return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\';
    });
    if (isPlain)
        out.append('"').append(text).append('"');
    else
        out.append(json(text.toStdString()).dump());
}

void appendRule(QByteArray &out, const ShortcutRule &rule) {
    const auto appendName = [&](Field field) {
        out.append(field == Field::Id ? "{\"" : ",\"");
        out.append(kFieldNames.at(static_cast<std::size_t>(field)));
        out.append("\":");
    };
    const auto appendTextField = [&](Field field, const QString &text) {
        appendName(field);
        appendText(out, text.toUtf8());
    };
    appendName(Field::Id);
    appendText(out, rule.id.toByteArray(QUuid::WithoutBraces).toUpper());
    appendTextField(Field::AppName, rule.appName);
    appendTextField(Field::AppPath, rule.appPath);
    appendName(Field::KeyCode);
    out.append(QByteArray::number(toNumber(rule.keyCode)));
    appendName(Field::ModifierFlags);
    out.append(QByteArray::number(rule.modifierFlags.bits()));
    appendName(Field::IsEnabled);
    out.append(rule.isEnabled ? "true" : "false");
    appendTextField(Field::RepeatAction, rawValue(rule.repeatAction));
    appendTextField(Field::LaunchArguments, rule.launchArguments);
    appendTextField(Field::ArgumentKind, rawValue(rule.argumentKind));
    out.append('}');
}

}  // namespace

std::optional<std::vector<ShortcutRule>> decodeRules(const QByteArray &text,
                                                     std::set<QUuid> *madeUpIds) {
    if (auto rules = readRules(text, madeUpIds))
        return rules;
    QByteArray repaired = text;
    return blankOutHugeNumbers(repaired) ? readRules(repaired, madeUpIds) : std::nullopt;
}

std::optional<QUuid> ruleIdFromText(const QString &text) {
    constexpr QStringView kForm(u"hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh");
    const auto fits = [](QChar c, QChar form) {
        const bool isHexDigit =
            (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
        return form == u'h' ? isHexDigit : c == form;
    };
    if (!std::ranges::equal(text, kForm, fits))
        return std::nullopt;
    return QUuid::fromString(text);
}

QByteArray encodeRules(const std::vector<ShortcutRule> &rules) {
    QByteArray text(1, '[');
    for (const ShortcutRule &rule : rules) {
        if (&rule != &rules.front())
            text.append(',');
        appendRule(text, rule);
    }
    return text.append(']');
}

}  // namespace kestrelbay
