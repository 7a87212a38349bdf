#include "model/RuleJson.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>

#include <QByteArrayView>
#include <QRegularExpression>
#include <nlohmann/json.hpp>

using nlohmann::json;
using nlohmann::ordered_json;

namespace kestrelbay {

namespace {

constexpr const char *kId = "id";
constexpr const char *kAppName = "appName";
constexpr const char *kAppPath = "appPath";
constexpr const char *kKeyCode = "keyCode";
constexpr const char *kModifierFlags = "modifierFlags";
constexpr const char *kIsEnabled = "isEnabled";
constexpr const char *kRepeatAction = "repeatAction";
constexpr const char *kLaunchArguments = "launchArguments";
constexpr const char *kArgumentKind = "argumentKind";

template <typename T>
const T *field(const json &object, const char *key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : found->get_ptr<const T *>();
}

/// Empty when there is none.
QString textField(const json &object, const char *key) {
    const auto *text = field<json::string_t>(object, key);
    return text ? QString::fromStdString(*text) : QString();
}

template <std::unsigned_integral Number>
std::optional<Number> numberField(const json &object, const char *key) {
    constexpr Number kMax = std::numeric_limits<Number>::max();
    if (const auto *number = field<json::number_unsigned_t>(object, key))
        return *number <= kMax ? std::optional(static_cast<Number>(*number)) : std::nullopt;
    // Other JSON writers may put whole numbers down as 45.0.
    if (const auto *number = field<json::number_float_t>(object, key)) {
        // 2^bits is exact in a double, whereas kMax may not be.
        const double limit = std::ldexp(1.0, std::numeric_limits<Number>::digits);
        if (*number >= 0 && *number < limit && std::trunc(*number) == *number)
            return static_cast<Number>(*number);
    }
    return std::nullopt;
}

ShortcutRule decodeRule(const json &object, std::set<QUuid> *madeUpIds) {
    ShortcutRule rule;
    if (const std::optional<QUuid> id = ruleIdFromText(textField(object, kId)))
        rule.id = *id;
    else if (madeUpIds)
        madeUpIds->insert(rule.id);
    rule.appName = textField(object, kAppName);
    rule.appPath = textField(object, kAppPath);
    rule.keyCode = KeyCode{numberField<std::uint16_t>(object, kKeyCode).value_or(std::uint16_t{0})};
    rule.modifierFlags =
        ModifierFlags(numberField<std::uint64_t>(object, kModifierFlags).value_or(0));
    if (const auto *isEnabled = field<json::boolean_t>(object, kIsEnabled))
        rule.isEnabled = *isEnabled;
    rule.repeatAction =
        repeatActionFromRawValue(textField(object, kRepeatAction)).value_or(rule.repeatAction);
    rule.launchArguments = textField(object, kLaunchArguments);
    rule.argumentKind = argumentKindFromRawValue(textField(object, kArgumentKind))
                            .value_or(ShortcutRule::inferKind(rule.launchArguments));
    return rule;
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

json parse(const QByteArray &text) {
    return json::parse(text.begin(), text.end(), nullptr, /*allow_exceptions=*/false);
}

ordered_json encodeRule(const ShortcutRule &rule) {
    ordered_json object;
    object[kId] = rule.id.toString(QUuid::WithoutBraces).toUpper().toStdString();
    object[kAppName] = rule.appName.toStdString();
    object[kAppPath] = rule.appPath.toStdString();
    object[kKeyCode] = toNumber(rule.keyCode);
    object[kModifierFlags] = rule.modifierFlags.bits();
    object[kIsEnabled] = rule.isEnabled;
    object[kRepeatAction] = rawValue(rule.repeatAction).toStdString();
    object[kLaunchArguments] = rule.launchArguments.toStdString();
    object[kArgumentKind] = rawValue(rule.argumentKind).toStdString();
    return object;
}

}  // namespace

std::optional<std::vector<ShortcutRule>> decodeRules(const QByteArray &text,
                                                     std::set<QUuid> *madeUpIds) {
    json document = parse(text);
    if (document.is_discarded()) {
        QByteArray repaired = text;
        if (blankOutHugeNumbers(repaired))
            document = parse(repaired);
    }
    // A discarded document is no array either.
    if (!document.is_array() ||
        !std::ranges::all_of(document, [](const json &element) { return element.is_object(); }))
        return std::nullopt;

    std::vector<ShortcutRule> rules;
    rules.reserve(document.size());
    for (const json &object : document)
        rules.push_back(decodeRule(object, madeUpIds));
    return rules;
}

std::optional<QUuid> ruleIdFromText(const QString &text) {
    const QUuid id = QUuid::fromString(text);
    const bool isExact = id.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
    return isExact ? std::optional(id) : std::nullopt;
}

QByteArray encodeRules(const std::vector<ShortcutRule> &rules) {
    ordered_json document = ordered_json::array();
    for (const ShortcutRule &rule : rules)
        document.push_back(encodeRule(rule));
    return QByteArray::fromStdString(
        document.dump(-1, ' ', false, ordered_json::error_handler_t::replace));
}

}  // namespace kestrelbay
