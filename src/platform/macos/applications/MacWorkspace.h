#pragma once

#include <memory>
#include <vector>

#include "platform/Workspace.h"

namespace kestrelbay {

class MacWorkspace final : public Workspace {
public:
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications() override;
    /// As the system standardises it, in one Unicode normal form: names of files are one in
    /// all of them. Capital and small letters stay different, as the system's URLs are too.
    [[nodiscard]] QUrl standardized(const QUrl &file) const override;
    [[nodiscard]] bool followsLinks() const override { return true; }
    [[nodiscard]] QUrl resolved(const QUrl &file) const override;
    bool open(const QUrl &file) override;
    bool openUrl(const QString &url) override;
    void openApplication(const QUrl &application, const QStringList &arguments,
                         Completion completion) override;
    /// False when there is no application at that URL; what becomes of the files is not
    /// waited for.
    bool openFiles(const QList<QUrl> &files, const QUrl &application) override;
    bool showFolder(const QString &path) override;
    [[nodiscard]] QString fileManagerIdentifier() const override;
    /// The system knows to which application a process belongs.
    /// There is no such thing.
    void setActivationToken(const QString & /*token*/) override {}
    void prepare(const QStringList & /*applicationPaths*/) override {}
};

}  // namespace kestrelbay
