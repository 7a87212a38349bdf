#pragma once

#include <utility>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QObject>
#include <QString>
#include <QTranslator>

#include "settings/Language.h"
#include "settings/Notifications.h"

namespace kestrelbay {

/// Has Qt's own texts, those of file dialogs and of the menus of text fields, follow the
/// language in force. They stay English where Qt's translations are not installed. Needs
/// the application object. Main thread.
class QtTexts final : public QObject {
    Q_OBJECT

public:
    /// The folder is where translations lie.
    explicit QtTexts(const Notifications &notifications,
                     QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath))
        : folder_(std::move(folder)) {
        follow();
        connect(&notifications, &Notifications::languageDidChange, this, &QtTexts::follow);
    }

private:
    void follow() {
        QCoreApplication::removeTranslator(&translator_);
        if (Language::current() == Language::zh &&
            translator_.load(QStringLiteral("qtbase_zh_CN"), folder_))
            QCoreApplication::installTranslator(&translator_);
    }

    const QString folder_;
    QTranslator translator_;
};

}  // namespace kestrelbay
