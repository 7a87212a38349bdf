#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/FrontProgram.h"
#include "desktop/display/WindowsView.h"
#include "desktop/session/PtyProcess.h"
#include "desktop/session/Session.h"
#include "desktop/stage/Cast.h"
#include "desktop/stage/ScenarioRules.h"
#include "desktop/stage/Story.h"

namespace kestrelbay::desktop {

struct StageOptions {
    QString program;
    QString windowManager = QStringLiteral("openbox");  ///< or a Wayland compositor
    QString artifacts = {};                             ///< empty: no screenshots
    QStringList serverArguments = {};
    QString only = {};  ///< a part of the names of the scenes to play; empty: all
    Story::Tells tells = Story::Tells::All;
};

/// Everything that a scene plays with, on whatever kind of display: the session, KestrelBay running
/// in it, a keyboard, and the words common to the scenes.
class StageBase {
public:
    using Window = WindowsView::Window;
    struct Ending {
        int code = -1;  ///< -1 when it did not end in time
        QString output = {};
    };

    StageBase(const StageBase &) = delete;
    StageBase &operator=(const StageBase &) = delete;
    virtual ~StageBase() = default;

    [[nodiscard]] virtual Session &desktop() = 0;
    [[nodiscard]] virtual WindowsView &view() = 0;
    [[nodiscard]] virtual FrontProgram &front() = 0;
    [[nodiscard]] Story &story() { return story_; }

    [[nodiscard]] const QString &windowManager() const { return options_.windowManager; }
    [[nodiscard]] bool can(Ability ability) const { return !whyNot(windowManager(), ability); }
    [[nodiscard]] const Cast &cast() const { return cast_; }

    /// KestrelBay. Throws NotPrepared when it is not running.
    [[nodiscard]] PtyProcess &program();
    void startProgram(const QStringList &arguments = {});
    /// A further start; waits for its end.
    [[nodiscard]] Ending startAgain(const QStringList &arguments);
    [[nodiscard]] Ending startAgain(const QStringList &arguments,
                                    const QProcessEnvironment &environment);
    /// What is started as KestrelBay.
    [[nodiscard]] const QString &programPath() const {
        return programPath_.isEmpty() ? options_.program : programPath_;
    }
    /// Another copy of KestrelBay at the starts to come; an empty path for the usual one.
    void useProgram(const QString &path) { programPath_ = path; }
    /// Of its environment at the starts to come; not there when the value is empty.
    void setProgramVariable(const QString &name, const QString &value);
    /// Asks it to end and waits until it has; nothing when it does not run.
    void endProgram();
    /// Does KestrelBay have its hotkeys? May press one of them to know.
    [[nodiscard]] virtual bool hasHotkeys() = 0;
    /// At the starts to come.
    void useRules(std::vector<RuleSpec> rules);
    [[nodiscard]] const QByteArray &rulesBytes() const { return rulesBytes_; }

    virtual void hold(const Chord &chord) = 0;
    virtual void letGo(const Chord &chord) = 0;
    void press(const Chord &chord);
    /// A step that begins with a press.
    void press(const Chord &chord, Step step);
    /// As "pressed L⌘T (X 133 28)".
    [[nodiscard]] static QString told(const Chord &chord);
    /// How long a held key took to repeat several times.
    [[nodiscard]] virtual std::chrono::steady_clock::duration timeToRepeat() = 0;

    /// Does something and waits for it; throws NotPrepared when it never comes.
    void prepare(const QString &what, const std::function<void()> &act,
                 const std::function<bool()> &condition);
    /// The plain program in front of everything, its memory of keys empty.
    void bringFrontProgram();
    void bringForward(Window window);
    /// The front-most window of the class; throws NotPrepared when there is none.
    [[nodiscard]] Window windowOf(const char *windowClass);
    [[nodiscard]] std::vector<Window> windowsOf(const char *windowClass);
    /// Is the active window one of this class, its title like that, and no other
    /// program's window above it?
    [[nodiscard]] bool isInFront(const char *windowClass, const QString &titlePart = {});
    /// Is none of them active, nor shown where the window manager can minimise?
    [[nodiscard]] bool areHidden(const std::vector<Window> &windows);
    /// What is to be expected for that.
    [[nodiscard]] QString hidingInWords() const;
    /// Closes all windows of the class but the given ones.
    void closeAll(const char *windowClass, const std::vector<Window> &except = {});
    /// As "in front: XTerm “title” 0x40000d".
    [[nodiscard]] QString frontInWords();

    /// Processes started by the marker's hotkey so far.
    [[nodiscard]] int markers();

    void screenshot(const QString &name);
    /// Keeps what KestrelBay has said beside the screenshots.
    void keepLog(const QString &name);

protected:
    StageBase(StageOptions options, const Cast &cast);

    /// The scenario's rules and files, in the home folder of the session.
    void furnish();
    /// Before its session goes.
    void dropProgram() { program_.reset(); }
    [[nodiscard]] const StageOptions &options() const { return options_; }
    [[nodiscard]] const std::vector<RuleSpec> &rules() const { return rules_; }

private:
    /// KestrelBay; true also where there is no bus.
    [[nodiscard]] bool isOnBus();

    StageOptions options_;
    const Cast &cast_;
    std::vector<RuleSpec> rules_;
    QByteArray rulesBytes_;
    QString programPath_;
    QProcessEnvironment programVariables_;
    std::optional<PtyProcess> program_;
    Story story_;
};

}  // namespace kestrelbay::desktop
