#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include <QHash>

#include "fakes/FakeRunningApplication.h"
#include "platform/Workspace.h"

namespace kestrelbay {

/// Writes down what it is asked for. Requests to the workspace and to its
/// applications and windows stand in one journal, so that their order shows; reads
/// stand in another. Once a test has installed an application, launching works as
/// on a desktop; until then every request is merely accepted.
class FakeWorkspace final : public Workspace {
public:
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications() override {
        reads_->add(QStringLiteral("runningApplications"));
        return applicationsOf(*processes_);
    }
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> inactiveApplications() override {
        FakeProcesses inactive;
        if (knowsInactive_)
            std::ranges::copy_if(*processes_, std::back_inserter(inactive),
                                 [](const auto &process) { return !process->isActive; });
        return applicationsOf(inactive);
    }
    [[nodiscard]] bool seesAllWindows() const override { return seesAllWindows_; }
    [[nodiscard]] QUrl standardized(const QUrl &file) const override {
        return standardizedFile(file);
    }
    [[nodiscard]] bool followsLinks() const override { return followsLinks_; }
    [[nodiscard]] QUrl resolved(const QUrl &file) const override {
        reads_->add(QStringLiteral("resolved"));
        if (!followsLinks_)
            return standardizedFile(file);
        return links_.value(standardizedFile(file), standardizedFile(file));
    }
    bool open(const QUrl &file) override {
        return request(QStringLiteral("open ") + text(file)) && launch(file);
    }
    bool openUrl(const QString &url) override { return request(QStringLiteral("openUrl ") + url); }
    void openApplication(const QUrl &application, const QStringList &arguments,
                         Completion completion) override {
        request(QStringLiteral("openApplication ") + text(application) + QStringLiteral(" [") +
                arguments.join(u'|') + u']');
        completion(launch(application) ? launchError_ : QStringLiteral("no such application"));
    }
    bool openFiles(const QList<QUrl> &files, const QUrl &application) override {
        QStringList texts;
        for (const QUrl &file : files)
            texts.append(text(file));
        return request(QStringLiteral("openFiles ") + texts.join(u'|') + QStringLiteral(" with ") +
                       text(application)) &&
               launch(application);
    }
    bool showFolder(const QString &path) override {
        return request(QStringLiteral("showFolder ") + path) && !fileManagerIdentifier_.isEmpty();
    }
    [[nodiscard]] QString fileManagerIdentifier() const override {
        reads_->add(QStringLiteral("fileManagerIdentifier"));
        return fileManagerIdentifier_;
    }
    void setActivationToken(const QString &token) override { activationToken_ = token; }
    void askAhead() override { ++askedAhead_; }
    void prepare(const QStringList &applicationPaths) override { prepared_ = applicationPaths; }

    // For the test:
    /// A process of the application at that path, listed last.
    std::shared_ptr<FakeProcess> run(const QString &name, const QString &applicationPath) {
        processes_->push_back(std::make_shared<FakeProcess>(
            FakeProcess{.name = name, .bundleURL = QUrl::fromLocalFile(applicationPath)}));
        return processes_->back();
    }
    [[nodiscard]] FakeProcess &newest() { return *processes_->back(); }
    /// An application that opens one window when it is launched, and comes forward.
    void install(const QString &applicationPath) { installed_.append(applicationPath); }
    void setFollowsLinks(bool follows) { followsLinks_ = follows; }
    void setKnowsInactive(bool knows) { knowsInactive_ = knows; }
    void setSeesAllWindows(bool sees) { seesAllWindows_ = sees; }
    /// The one path is a link to the other.
    void link(const QString &path, const QString &target) {
        links_.insert(QUrl::fromLocalFile(path), QUrl::fromLocalFile(target));
    }
    void quit(const QString &applicationPath) {
        std::erase_if(*processes_, [&](const auto &process) {
            const bool isIt = process->bundleURL == QUrl::fromLocalFile(applicationPath);
            if (isIt)
                process->quit();
            return isIt;
        });
    }
    void setFileManagerIdentifier(const QString &identifier) {
        fileManagerIdentifier_ = identifier;
    }
    /// What openApplication() completes with; empty for success.
    void setLaunchError(const QString &errorText) { launchError_ = errorText; }
    /// Called within every request to the workspace itself.
    void setRequestHook(std::function<void()> hook) { requestHook_ = std::move(hook); }
    /// How often.
    [[nodiscard]] int askedAhead() const { return askedAhead_; }
    [[nodiscard]] const QString &activationToken() const { return activationToken_; }
    [[nodiscard]] const QStringList &preparedPaths() const { return prepared_; }
    [[nodiscard]] Journal &requests() { return *requests_; }
    [[nodiscard]] Journal &reads() { return *reads_; }

private:
    static QString text(const QUrl &url) { return QString::fromLatin1(url.toEncoded()); }
    bool request(const QString &line) {
        requests_->add(line);
        if (requestHook_)
            requestHook_();
        return true;
    }

    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> applicationsOf(
        const FakeProcesses &processes) const {
        std::vector<std::unique_ptr<RunningApplication>> applications;
        for (const auto &process : processes)
            applications.push_back(
                std::make_unique<FakeRunningApplication>(process, processes_, requests_, reads_));
        return applications;
    }

    bool launch(const QUrl &application) {
        if (installed_.isEmpty())
            return true;
        const QString path = application.toLocalFile();
        if (!installed_.contains(path))
            return false;
        for (const auto &process : *processes_)
            process->isActive = false;
        const auto process = run(path, path);
        process->bundleIdentifier = path;
        process->isActive = true;
        process->addWindow(path);
        return true;
    }

    std::shared_ptr<FakeProcesses> processes_ = std::make_shared<FakeProcesses>();
    QStringList installed_;
    bool followsLinks_ = true;
    bool knowsInactive_ = false;
    bool seesAllWindows_ = true;
    QHash<QUrl, QUrl> links_;
    std::shared_ptr<Journal> requests_ = std::make_shared<Journal>();
    std::shared_ptr<Journal> reads_ = std::make_shared<Journal>();
    QString fileManagerIdentifier_ = QStringLiteral("com.apple.finder");
    QString launchError_;
    QString activationToken_;
    int askedAhead_ = 0;
    QStringList prepared_;
    std::function<void()> requestHook_;
};

}  // namespace kestrelbay
