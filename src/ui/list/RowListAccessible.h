#pragma once

namespace kestrelbay {

/// From now on screen readers see every RowListView as a list of all its rows, those out of
/// sight included. A row is named by the model's Qt::AccessibleTextRole; the controls of one
/// in sight are below it.
void installRowListAccessibility();

}  // namespace kestrelbay
