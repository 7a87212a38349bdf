#include "desktop/stage/Play.h"

#include <QStringList>

#include "support/WindowManagerStart.h"

namespace kestrelbay::desktop {

namespace {

std::optional<StageOptions> parse(const QStringList &arguments) {
    StageOptions options;
    options.program = QStringLiteral(KESTRELBAY_PROGRAM);
    for (qsizetype i = 0; i + 1 < arguments.size(); i += 2) {
        if (arguments[i] == u"--wm")
            options.windowManager = arguments[i + 1];
        else if (arguments[i] == u"--artifacts")
            options.artifacts = arguments[i + 1];
        else if (arguments[i] == u"--only")
            options.only = arguments[i + 1];
        else if (arguments[i] == u"--program")
            options.program = arguments[i + 1];
        else
            return std::nullopt;
    }
    if (arguments.size() % 2 != 0 ||
        !testing::knownWindowManagers().contains(options.windowManager))
        return std::nullopt;
    return options;
}

}  // namespace

std::optional<StageOptions> readStageOptions(int argc, char **argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    auto options = parse(arguments);
    if (!options) {
        std::fprintf(stderr,
                     "usage: %s [--wm %s] [--artifacts DIR] [--program PATH] [--only SCENE]\n",
                     argv[0], testing::knownWindowManagers().join(u'|').toUtf8().constData());
    }
    return options;
}

}  // namespace kestrelbay::desktop
