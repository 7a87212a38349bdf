#include "desktop/shots/Shots.h"

#include <QDir>

#include "desktop/display/Picture.h"

namespace kestrelbay::desktop {

namespace {

/// What is shown around a toast.
constexpr int kAround = 24;

}  // namespace

QString Look::name() const {
    QString name = language + (isDark ? QStringLiteral("-dark") : QStringLiteral("-light"));
    if (!scale.isEmpty())
        name += u'-' + scale + u'x';
    if (!style.isEmpty())
        name += u'-' + style.toLower();
    return isContrastHigh ? name + QStringLiteral("-contrast") : name;
}

void ShotStage::wear(const Look &look) {
    look_ = look;
    setProgramVariable(QStringLiteral("QT_SCALE_FACTOR"), look.scale);
    setProgramVariable(QStringLiteral("QT_STYLE_OVERRIDE"), look.style);
    toasts().setScale(look.factor());
}

void ShotStage::begin(QJsonObject settings, Keys keys) {
    beginWith(scenarioRules(desktop().home(), cast()), std::move(settings), keys);
}

void ShotStage::beginWith(std::vector<RuleSpec> rules, QJsonObject settings, Keys keys) {
    useRules(std::move(rules));
    settings.insert(QStringLiteral("appLanguage"), look_.language);
    pointer().moveTo({1, 1});
    restartProgram(settings, keys);
}

QSize ShotStage::scaled(const QSize &points) const {
    return points * look_.factor();
}

QPoint ShotStage::scaled(const QPoint &points) const {
    return points * look_.factor();
}

void ShotStage::shoot(const QString &name, const QRect &area) {
    const auto picture = settledPictureOf(view().client(), area);
    if (!picture)
        throw NotPrepared(name + QStringLiteral(" does not come to rest"));
    keep(name, *picture);
}

void ShotStage::shootAtOnce(const QString &name, const QRect &area) {
    keep(name, pictureOf(view().client(), area));
}

void ShotStage::keep(const QString &name, const QImage &picture) const {
    const QString path =
        QDir(options().artifacts).filePath(look_.name() + u'/' + name + QStringLiteral(".png"));
    QDir(options().artifacts).mkpath(look_.name());
    if (!picture.save(path))
        throw NotPrepared(QStringLiteral("cannot write ") + path);
}

QRect ShotStage::withFrame(Window window) {
    XClient &client = view().client();
    const auto extents = client.numbers(window, "_NET_FRAME_EXTENTS");
    QRect area = client.area(window);
    if (extents.size() == 4)
        area.adjust(-int(extents[0]), -int(extents[2]), int(extents[1]), int(extents[3]));
    // A maximised window has its frame outside of the screen.
    return area.intersected(client.area(client.root()));
}

void ShotStage::shootWindow(const QString &name, const QSize &points) {
    const QSize size = scaled(points);
    prepare(
        name, [] {}, [&] { return isInFront(size); });
    shoot(name, withFrame(*programWindow(size)));
}

void ShotStage::shootToast(const QString &name, const std::vector<ToastWatch::Toast> &seen) {
    prepare(
        name, [] {},
        [&] {
            (void)toasts().launchToasts();
            // A message is there at once, an icon fades in.
            return !seen.empty() && (seen.back().opaque || &seen == &toasts().messageToasts());
        });
    shoot(name, seen.back().area.adjusted(-kAround, -kAround, kAround, kAround));
}

}  // namespace kestrelbay::desktop
