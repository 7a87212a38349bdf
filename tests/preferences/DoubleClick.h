#pragma once

#include <QTest>
#include <QWidget>

namespace kestrelbay {

/// Lets the button go at the end, which QTest does not: whoever asks for it would find it
/// pressed, in the tests that follow too.
inline void doubleClick(QWidget *widget, QPoint place) {
    QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, place);
}

}  // namespace kestrelbay
