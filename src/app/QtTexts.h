#pragma once

#include <QLibraryInfo>
#include <QObject>
#include <QString>
#include <QTranslator>

namespace kestrelbay {

class Notifications;

/// Has Qt's own texts, those of file dialogs and of the menus of text fields, follow the
/// language in force. They stay English where Qt's translations are not installed. Needs
/// the application object. Main thread.
class QtTexts final : public QObject {
    Q_OBJECT

public:
    /// The folder is where translations lie.
    explicit QtTexts(const Notifications &notifications,
                     QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath));

private:
    void follow();

    const QString folder_;
    QTranslator translator_;
};

}  // namespace kestrelbay
