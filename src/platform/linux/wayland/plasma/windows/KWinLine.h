#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QString>

namespace kestrelbay::plasma {

/// Questions to a script of ours that KWin runs.
///
/// A script can call other programs, and not be called. So this one calls us and is answered with
/// the next question, for which it thus waits; then it calls again with what came of it. KWin does
/// not wait meanwhile, and forgets a call after a while. A question that comes later has it run
/// the script anew, which takes a few milliseconds. Any thread, several at a time.
class KWinLine {
public:
    /// Called on a thread of GIO's, which must not be kept.
    struct Handlers {
        std::function<void()> windowAppeared;
        /// It has the focus now; by the script's name for it.
        std::function<void(const QString &name)> windowUsed;
    };
    using Number = std::uint64_t;

    /// KWin forgets a call after 25 s, without a word to the script.
    static constexpr std::chrono::milliseconds kLongestSilence{std::chrono::seconds(20)};
    /// KWin answers within a millisecond or two; this is for busy machines.
    static constexpr std::chrono::milliseconds kPatience{1000};

    explicit KWinLine(std::chrono::milliseconds longestSilence = kLongestSilence);
    /// Has KWin forget the script, but waits for that no longer than kPatience.
    ~KWinLine();
    KWinLine(const KWinLine &) = delete;
    KWinLine &operator=(const KWinLine &) = delete;

    /// Is there a KWin? Waits as above.
    [[nodiscard]] bool isKWinThere() const;
    /// Has KWin run the script, and again whenever KWin begins anew. Once; waits as above for each
    /// of a few calls.
    void listen(Handlers handlers);

    /// What came of it; none when KWin does not answer in time.
    [[nodiscard]] std::optional<QByteArray> ask(const QByteArray &question) {
        return await(send(question));
    }
    // The halves of ask(), for who has something to do meanwhile.
    [[nodiscard]] Number send(const QByteArray &question);
    [[nodiscard]] std::optional<QByteArray> await(Number number);

private:
    struct State;

    const std::shared_ptr<State> state_;
};

}  // namespace kestrelbay::plasma
