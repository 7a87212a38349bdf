#include "app/QtTexts.h"

#include <utility>

#include <QCoreApplication>

#include "settings/Language.h"
#include "settings/NotificationCenter.h"

namespace kestrelbay {

QtTexts::QtTexts(NotificationCenter &center, QString folder) : folder_(std::move(folder)) {
    follow();
    center.observe(notifications::kLanguageDidChange, this, [this] { follow(); });
}

void QtTexts::follow() {
    QCoreApplication::removeTranslator(&translator_);
    if (Language::current() == Language::zh &&
        translator_.load(QStringLiteral("qtbase_zh_CN"), folder_))
        QCoreApplication::installTranslator(&translator_);
}

}  // namespace kestrelbay
