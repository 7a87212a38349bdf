#include <map>

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include "fixtures/QtPrinters.h"
#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::macos {
namespace {

/// Numbers by name, of the rows whose names begin so.
std::map<QString, std::uint64_t> numbers(const QString &prefix) {
    QFile file(QStringLiteral(KESTRELBAY_MACOS_FACTS));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::map<QString, std::uint64_t> found;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const QStringList cells = line.split(u'\t');
        if (cells.size() > 5 && cells[2].startsWith(prefix))
            found.emplace(cells[2].mid(prefix.size()), cells[5].toULongLong());
    }
    return found;
}

std::map<QString, KeyCode> modifierKeys() {
    return {
        {u"Command"_s, key::kLeftCommand},       {u"Control"_s, key::kLeftControl},
        {u"Option"_s, key::kLeftOption},         {u"Shift"_s, key::kLeftShift},
        {u"RightCommand"_s, key::kRightCommand}, {u"RightControl"_s, key::kRightControl},
        {u"RightOption"_s, key::kRightOption},   {u"RightShift"_s, key::kRightShift},
    };
}

/// Those that print something else than they are called.
std::map<QString, QString> printedOtherwise() {
    return {
        {u"Backslash"_s, u"\\"_s},    {u"Clear"_s, u"⌧"_s},       {u"Comma"_s, u","_s},
        {u"Decimal"_s, u"."_s},       {u"Delete"_s, u"⌫"_s},      {u"Divide"_s, u"/"_s},
        {u"DownArrow"_s, u"↓"_s},     {u"End"_s, u"↘"_s},         {u"Enter"_s, u"↩"_s},
        {u"Equal"_s, u"="_s},         {u"Equals"_s, u"="_s},      {u"Escape"_s, u"⎋"_s},
        {u"ForwardDelete"_s, u"⌦"_s}, {u"Grave"_s, u"`"_s},       {u"Home"_s, u"↖"_s},
        {u"LeftArrow"_s, u"←"_s},     {u"LeftBracket"_s, u"["_s}, {u"Minus"_s, u"-"_s},
        {u"Multiply"_s, u"*"_s},      {u"PageDown"_s, u"⇟"_s},    {u"PageUp"_s, u"⇞"_s},
        {u"Period"_s, u"."_s},        {u"Plus"_s, u"+"_s},        {u"Quote"_s, u"'"_s},
        {u"Return"_s, u"Key(36)"_s},  {u"RightArrow"_s, u"→"_s},  {u"RightBracket"_s, u"]"_s},
        {u"Semicolon"_s, u";"_s},     {u"Slash"_s, u"/"_s},       {u"Tab"_s, u"⇥"_s},
        {u"UpArrow"_s, u"↑"_s},
    };
}

TEST(KeyNumbersTest, KeysAreWhereMacOSHasThem) {
    const auto keys = numbers(u"kVK_"_s);
    const auto modifiers = modifierKeys();
    const auto others = printedOtherwise();
    EXPECT_EQ(keys.size(), 103U);
    for (const auto &[name, number] : keys) {
        const KeyCode code{static_cast<std::uint16_t>(number)};
        QString key = name;
        key.remove(QRegularExpression(u"^ANSI_(Keypad)?"_s));
        if (const auto modifier = modifiers.find(key); modifier != modifiers.end()) {
            EXPECT_EQ(toNumber(code), toNumber(modifier->second)) << name.toStdString();
            continue;
        }
        const auto printed = others.find(key);
        EXPECT_EQ(keyName(code), printed == others.end() ? key : printed->second);
    }
}

TEST(KeyNumbersTest, ModifiersHaveTheBitsOfEvents) {
    const std::map<QString, ModifierFlags> generic{
        {u"Alternate"_s, modifier::kOption},
        {u"Command"_s, modifier::kCommand},
        {u"Control"_s, modifier::kControl},
        {u"Shift"_s, modifier::kShift},
    };
    const std::map<QString, ModifierFlags> sides{
        {u"LALTKEYMASK"_s, modifier::kLeftOption},   {u"LCMDKEYMASK"_s, modifier::kLeftCommand},
        {u"LCTLKEYMASK"_s, modifier::kLeftControl},  {u"LSHIFTKEYMASK"_s, modifier::kLeftShift},
        {u"RALTKEYMASK"_s, modifier::kRightOption},  {u"RCMDKEYMASK"_s, modifier::kRightCommand},
        {u"RCTLKEYMASK"_s, modifier::kRightControl}, {u"RSHIFTKEYMASK"_s, modifier::kRightShift},
    };
    for (const auto &[prefix, flags] :
         {std::pair(u"kCGEventFlagMask"_s, generic), std::pair(u"NX_DEVICE"_s, sides)}) {
        const auto bits = numbers(prefix);
        EXPECT_EQ(bits.size(), flags.size());
        for (const auto &[name, number] : bits)
            EXPECT_EQ(ModifierFlags(number), flags.at(name)) << name.toStdString();
    }
}

}  // namespace
}  // namespace kestrelbay::macos
