#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where things are in the preferences window at its first size. In points, from the
/// upper left corner of what the frame surrounds.
namespace kestrelbay::desktop::places {

inline constexpr QSize kPreferences{704, 598};
inline constexpr QSize kAppPicker{380, 460};
/// In the picker: where the icons of its first rows are, and some ground at their right.
inline constexpr QRect kPickerIcons{22, 100, 28, 100};
inline constexpr QSize kAdvancedPanel{475, 280};
inline constexpr QSize kImportSheet{620, 400};
/// In that sheet, beside the word of the button; and how far the word may reach from there.
inline constexpr QPoint kImportAdd{525, 366};
inline constexpr QSize kImportAddTitle{60, 8};

inline constexpr QPoint kRulesTab{272, 28}, kAdvancedTab{432, 28};
/// Of a tab, but beside its words.
inline constexpr QPoint kAdvancedTabGround{365, 28};
inline constexpr QPoint kAddButton{32, 576};

inline constexpr int kRowsTop = 60, kRowPitch = 56, kRowsBottom = 554;

/// Of a row: its title and the line below it begin here.
inline constexpr int kTextsLeft = 70;

/// The middle of the first row's icon, which is empty as long as there is none.
inline constexpr QPoint kFirstIcon{50, kRowsTop + kRowPitch / 2};

/// With their distance from the row's right end.
enum class RowPart {
    Handle = 18,
    Delete = 45,
    Advanced = 71,
    Switch = 113,
    Clear = 159,
    Recorder = 236,
    RefusedSign = 318,
    Name = 560,
};

/// In a list that needs no scroll bar.
[[nodiscard]] constexpr QPoint inRow(int row, RowPart part) {
    return {678 - static_cast<int>(part), kRowsTop + row * kRowPitch + kRowPitch / 2};
}
/// The place that a row has at the end of a list that is longer than the window.
[[nodiscard]] constexpr QPoint inLastRow(RowPart part) {
    return {668 - static_cast<int>(part), kRowsBottom - kRowPitch / 2};
}
/// To the left of the recorder: it gets here only while it shakes.
[[nodiscard]] constexpr QRect besideRecorder(int row) {
    return {QPoint(369, kRowsTop + row * kRowPitch + kRowPitch / 2), QSize(4, 1)};
}

enum class Setting { LaunchAtLogin, Language, Sound, Toast, ConfigFolder, Access };

/// The control at the right end of a row of the Advanced tab.
[[nodiscard]] constexpr QPoint controlOf(Setting setting) {
    return {704 - 28 - 20, 93 + 51 * static_cast<int>(setting)};
}

}  // namespace kestrelbay::desktop::places
