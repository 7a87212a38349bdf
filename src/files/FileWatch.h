#pragma once

#include <functional>

#include <QFileSystemWatcher>
#include <QString>

namespace kestrelbay {

/// Tells when a file may be another one or have another content: it, or a symbolic link or
/// folder on the way to it, was written, replaced, moved, removed or made. Sleeps meanwhile.
/// Main thread.
class FileWatch {
public:
    /// `changed` is called from the event loop, once or more for a change, also when nothing
    /// is different in the end. A change before this returns is not told.
    FileWatch(QString path, std::function<void()> changed);

private:
    void watchWay();
    void note();

    const QString path_;
    const std::function<void()> changed_;
    QFileSystemWatcher watcher_;
};

}  // namespace kestrelbay
