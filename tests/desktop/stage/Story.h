#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

#include <QString>
#include <QStringList>

#include "desktop/stage/ManagerTraits.h"

namespace kestrelbay::desktop {

/// The stage could not be set for a step; the scene ends, the story goes on.
class NotPrepared : public std::runtime_error {
public:
    explicit NotPrepared(const QString &what) : std::runtime_error(what.toStdString()) {}
};

/// Something is done, and something is to be seen for it.
struct Step {
    QString done = {};      ///< what was pressed
    QString expected = {};  ///< what should come of it
    std::function<void()> act = {};
    /// Asked again and again from the act on; the step's time ends when it holds.
    std::function<bool()> seen = {};
    /// What there is to see, in words.
    std::function<QString()> saw = {};
    /// Asked once, when `seen` holds: what happened besides that should not have.
    /// Empty when all is well.
    std::function<QString()> objection = [] { return QString(); };
    std::chrono::milliseconds timeout = std::chrono::seconds(10);
    /// Where the window manager lacks it, nothing is to be seen.
    std::optional<Ability> needs = {};
};

/// Carries out steps and tells each of them on one line of standard output.
class Story {
public:
    enum class Tells {
        All,
        /// The scenes, the steps of those in which something failed, and how it ended: where
        /// what is printed is shown in part only, what failed has to be in that part.
        Failures,
    };

    explicit Story(QString windowManager, Tells tells = Tells::All);

    /// A group of steps. When one of them throws, the scene counts as failed and
    /// the next one begins.
    void scene(const QString &name, const std::function<void()> &body);
    void step(const Step &step);

    [[nodiscard]] bool hasFailures() const { return !failures_.empty(); }
    /// Prints how it ended. True when everything was seen.
    [[nodiscard]] bool conclude(const QString &title);

private:
    void tell(const QString &line);
    void fail(const QString &line);
    void print();

    std::chrono::steady_clock::time_point start_;
    QString windowManager_;
    Tells tells_;
    /// Of this scene, and not printed yet.
    QStringList told_;
    int seen_ = 0;
    int cannot_ = 0;
    std::vector<QString> failures_;
    QString scene_;
};

}  // namespace kestrelbay::desktop
