#include "app/QtTexts.h"

#include <utility>

#include <QCoreApplication>

#include "settings/Language.h"
#include "settings/Notifications.h"

namespace kestrelbay {

QtTexts::QtTexts(const Notifications &notifications, QString folder) : folder_(std::move(folder)) {
    follow();
    connect(&notifications, &Notifications::languageDidChange, this, &QtTexts::follow);
}

void QtTexts::follow() {
    QCoreApplication::removeTranslator(&translator_);
    if (Language::current() == Language::zh &&
        translator_.load(QStringLiteral("qtbase_zh_CN"), folder_))
        QCoreApplication::installTranslator(&translator_);
}

}  // namespace kestrelbay
