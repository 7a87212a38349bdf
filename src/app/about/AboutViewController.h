#pragma once

#include <QObject>
#include <QSize>

class QWidget;

namespace kestrelbay {

class Workspace;

/// What the About window shows: icon, name and version, and two links. Main thread.
class AboutViewController final : public QObject {
    Q_OBJECT

public:
    /// Of its view, in device-independent pixels.
    static constexpr QSize kSize{340, 200};

    /// Fills the view. The workspace has to outlive this.
    AboutViewController(QWidget &view, Workspace &workspace);

    /// Opens the page from which updates are downloaded.
    void checkForUpdates();
    /// Opens a message to the author.
    void contactFeedback();

private:
    Workspace &workspace_;
};

}  // namespace kestrelbay
