#pragma once

#include <QScrollArea>

namespace kestrelbay {

/// Shows what there may be no room for. It has no look of its own, is no place for the keyboard,
/// and scrolls down to what gets it by Tab, but never sideways.
class PlainScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    /// The content belongs to it. It keeps its size, unless the area is told to resize it.
    explicit PlainScrollArea(QWidget *content, QWidget *parent = nullptr);
};

}  // namespace kestrelbay
