#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QString>

#include "platform/RunningApplication.h"
#include "platform/linux/applications/matching/ApplicationMatch.h"

namespace kestrelbay {

/// What windows have for a process that is not of this machine, or that nobody tells: above every
/// number that the kernel gives, and never to be signalled.
inline constexpr ProcessIdentifier kUnknownProcess{0x7fff'ffff};

/// The windows of one application.
struct ApplicationGroup {
    /// Index into the entries of the index; none when no entry fits.
    std::optional<std::size_t> entry;
    /// The process of its front-most window; below 1 when it is unknown.
    std::int64_t pid = 0;
    bool active = false;
    /// The numbers of the windows, front-most first.
    std::vector<std::size_t> windows;

    [[nodiscard]] ProcessIdentifier process() const {
        return pid > 0 ? ProcessIdentifier{pid} : kUnknownProcess;
    }
};

/// Groups windows. A window that several entries claim is in the group of each; one that none
/// claims is grouped with its process, or with its class; one that tells nothing at all is in
/// none. The group of the front-most window comes first, and so on; among the entries of one
/// window, the one of highest precedence.
class ApplicationGrouping {
public:
    /// The next window, the front-most one being the first.
    void add(std::size_t window, const WindowFacts &facts,
             const std::vector<ApplicationMatch> &matches, bool active);

    [[nodiscard]] std::vector<ApplicationGroup> take() { return std::move(groups_); }

private:
    struct Member {
        std::size_t window;
        std::int64_t pid;
        bool active;
    };
    template <typename Key>
    void add(std::unordered_map<Key, std::size_t> &table, const Key &key, const Member &member,
             std::optional<std::size_t> entry);

    std::vector<ApplicationGroup> groups_;
    std::unordered_map<std::size_t, std::size_t> byEntry_;
    std::unordered_map<std::int64_t, std::size_t> byPid_;
    std::unordered_map<QString, std::size_t> byClass_;
};

}  // namespace kestrelbay
