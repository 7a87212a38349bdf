#pragma once

#import <AppKit/NSAlert.h>

#include <optional>

#include <QString>
#include <QStringList>

namespace kestrelbay::macos {

/// What an alert shows: its style, texts and buttons, the latter with what is special of them.
[[nodiscard]] QStringList contentOf(NSAlert *alert);

/// The alert that is a sheet of a window; nil for none.
[[nodiscard]] NSAlert *openSheet();

/// The user presses one of the open sheet's buttons, counted from 0.
void pressInSheet(int button);

/// The button that the user presses in an alert that runs modally.
void setModalAnswer(int button);
[[nodiscard]] NSAlert *lastModalAlert();

}  // namespace kestrelbay::macos
