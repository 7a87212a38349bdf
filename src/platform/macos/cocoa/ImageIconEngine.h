#pragma once

#include <QIconEngine>

#import <AppKit/NSImage.h>

#include "platform/macos/cocoa/ObjCOwner.h"

namespace kestrelbay {

/// Paints an image of the system at any size, from that of its pictures that suits the
/// size best. Made on any thread, painted on the main thread.
class ImageIconEngine final : public QIconEngine {
public:
    explicit ImageIconEngine(NSImage *image) : image_(ObjCOwner<NSImage *>::retained(image)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine *clone() const override { return new ImageIconEngine(image_.get()); }
    [[nodiscard]] QString key() const override { return QStringLiteral("KestrelBayImage"); }
    [[nodiscard]] bool isNull() override { return !image_; }

private:
    ObjCOwner<NSImage *> image_;
};

}  // namespace kestrelbay
