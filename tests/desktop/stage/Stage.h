#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QString>

#include "desktop/display/FrontWindow.h"
#include "desktop/session/Desktop.h"
#include "desktop/session/PtyProcess.h"
#include "desktop/stage/ScenarioRules.h"
#include "desktop/stage/Story.h"
#include "support/KeyPresser.h"

namespace kestrelbay::desktop {

struct StageOptions {
    QString program;
    QString windowManager = QStringLiteral("openbox");
    QString artifacts;  ///< empty: no screenshots
    QStringList serverArguments = {};
    QString only;  ///< a part of the names of the scenes to play; empty: all
};

/// Everything that a scene plays with: the desktop, KestrelBay running in it, a
/// keyboard, and the words common to the scenes.
class Stage {
public:
    using Window = WindowManagerView::Window;
    struct Ending {
        int code = -1;  ///< -1 when it did not end in time
        QString output = {};
    };

    explicit Stage(StageOptions options);

    [[nodiscard]] Desktop &desktop() { return desktop_; }
    [[nodiscard]] WindowManagerView &view() { return desktop_.view(); }
    [[nodiscard]] FrontWindow &front() { return front_; }
    [[nodiscard]] Story &story() { return story_; }

    [[nodiscard]] const QString &windowManager() const { return options_.windowManager; }
    [[nodiscard]] bool can(Ability ability) const { return !whyNot(windowManager(), ability); }

    /// KestrelBay. Throws NotPrepared when it is not running.
    [[nodiscard]] PtyProcess &program();
    void startProgram(const QStringList &arguments = {});
    /// A further start; waits for its end.
    [[nodiscard]] Ending startAgain(const QStringList &arguments);
    [[nodiscard]] Ending startAgain(const QStringList &arguments,
                                    const QProcessEnvironment &environment) const;
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
    /// Does KestrelBay, or anyone else, hold L⌘ with this key?
    [[nodiscard]] bool isGrabbed(const Key &key);
    /// How many of the rules on Command alone have it grabbed.
    [[nodiscard]] int grabbedCount();
    /// How many rules there are on Command alone.
    [[nodiscard]] int ruleCount() const;
    /// At the starts to come.
    void useRules(std::vector<RuleSpec> rules);
    [[nodiscard]] const QByteArray &rulesBytes() const { return rulesBytes_; }

    void hold(const Chord &chord);
    void letGo(const Chord &chord);
    void press(const Chord &chord);
    /// Key by key; throws NotPrepared when the keyboard lacks one.
    void type(const QString &text);
    /// A step that begins with a press.
    void press(const Chord &chord, Step step);
    /// As "pressed L⌘T (X 133 28)".
    [[nodiscard]] static QString told(const Chord &chord);

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
    [[nodiscard]] int markers() const;

    void screenshot(const QString &name);
    /// Keeps what KestrelBay has said beside the screenshots.
    void keepLog(const QString &name);

protected:
    [[nodiscard]] const StageOptions &options() const { return options_; }

private:
    StageOptions options_;
    Desktop desktop_;
    FrontWindow front_;
    testing::KeyPresser keyboard_;
    std::vector<RuleSpec> rules_;
    QByteArray rulesBytes_;
    QString programPath_;
    QProcessEnvironment programVariables_;
    std::optional<PtyProcess> program_;
    Story story_;
};

}  // namespace kestrelbay::desktop
