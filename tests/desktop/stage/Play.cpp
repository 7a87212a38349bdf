#include "desktop/stage/Play.h"

#include <QStringList>

#include "support/WindowManagerStart.h"

namespace kestrelbay::desktop {

namespace {

std::optional<StageOptions> parse(QStringList arguments, const QStringList &compositors) {
    QStringList managers = testing::knownWindowManagers();
    StageOptions options;
    if (arguments.removeAll(QStringLiteral("--brief")) > 0)
        options.tells = Story::Tells::Failures;
    options.program = QStringLiteral(KESTRELBAY_PROGRAM);
    for (qsizetype i = 0; i + 1 < arguments.size(); i += 2) {
        if (arguments[i] == u"--wm")
            options.windowManager = arguments[i + 1];
        else if (arguments[i] == u"--session" && !compositors.isEmpty()) {
            options.windowManager = arguments[i + 1];
            managers = compositors;
        } else if (arguments[i] == u"--artifacts")
            options.artifacts = arguments[i + 1];
        else if (arguments[i] == u"--only")
            options.only = arguments[i + 1];
        else if (arguments[i] == u"--program")
            options.program = arguments[i + 1];
        else
            return std::nullopt;
    }
    if (arguments.size() % 2 != 0 || !managers.contains(options.windowManager))
        return std::nullopt;
    return options;
}

}  // namespace

std::optional<StageOptions> readStageOptions(int argc, char **argv,
                                             const QStringList &compositors) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    auto options = parse(arguments, compositors);
    if (!options) {
        QString manager = QStringLiteral("--wm ") + testing::knownWindowManagers().join(u'|');
        if (!compositors.isEmpty())
            manager += QStringLiteral(" | --session ") + compositors.join(u'|');
        std::fprintf(stderr,
                     "usage: %s [%s] [--artifacts DIR] [--program PATH] [--only SCENE] [--brief]\n",
                     argv[0], manager.toUtf8().constData());
    }
    return options;
}

}  // namespace kestrelbay::desktop
