#include "ui/widgets/PlainScrollArea.h"

namespace kestrelbay {

PlainScrollArea::PlainScrollArea(QWidget *content, QWidget *parent) : QScrollArea(parent) {
    setWidget(content);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

}  // namespace kestrelbay
