#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <QHash>
#include <QString>

#include "platform/linux/applications/entries/DesktopEntry.h"

namespace kestrelbay {

/// All desktop entries at one moment, with the look-ups that recognising a window
/// needs. Never changes once made: may be read by any number of threads.
///
/// An entry marked as deleted, and those it shadows, are found by nothing but
/// their path, unless a rule names them.
class ApplicationIndex {
public:
    /// Entries in order of precedence, a winning one before those it shadows.
    explicit ApplicationIndex(std::vector<DesktopEntry> entries, QString fileManagerId = {});

    using Found = std::span<const std::size_t>;

    [[nodiscard]] const std::vector<DesktopEntry> &entries() const { return entries_; }
    /// Id of the application that opens folders; empty when there is none.
    [[nodiscard]] const QString &fileManagerId() const { return fileManagerId_; }

    // Each look-up gives indices into entries(), in order of precedence.

    /// With or without ".desktop", in any case.
    [[nodiscard]] Found withId(const QString &id) const;
    /// "editor" finds org.example.Editor.desktop; ids without a dot are not found.
    [[nodiscard]] Found withLastPartOfId(const QString &name) const {
        return find(lastParts_, name.toCaseFolded());
    }
    [[nodiscard]] Found withStartupWmClass(const QString &name) const {
        return find(wmClasses_, name);
    }
    [[nodiscard]] Found withFlatpakId(const QString &id) const { return find(flatpaks_, id); }
    [[nodiscard]] Found withSnapName(const QString &name) const { return find(snaps_, name); }
    [[nodiscard]] Found withProgram(const QString &program) const {
        return find(programs_, program);
    }
    [[nodiscard]] Found withExecutableName(const QString &name) const {
        return find(executableNames_, name);
    }
    [[nodiscard]] Found withPath(const QString &path) const { return find(paths_, path); }

private:
    using Table = QHash<QString, std::vector<std::size_t>>;
    static void add(Table &table, const QString &key, std::size_t entry);
    static Found find(const Table &table, const QString &key);

    std::vector<DesktopEntry> entries_;
    QString fileManagerId_;
    Table ids_, lastParts_, wmClasses_, flatpaks_, snaps_, programs_, executableNames_, paths_;
};

}  // namespace kestrelbay
