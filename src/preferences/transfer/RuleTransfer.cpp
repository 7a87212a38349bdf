#include "preferences/transfer/RuleTransfer.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include <iterator>
#include <utility>

#include "hotkeys/ShortcutManager.h"
#include "model/RuleExport.h"
#include "model/RuleImport.h"
#include "preferences/RuleRowTexts.h"
#include "preferences/transfer/ImportSheet.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

/// `chosen` is called with the file when the dialog is gone.
QFileDialog *makeDialog(const QString &title, QWidget *parent,
                        const std::function<void(const QString &path)> &chosen) {
    auto *const dialog = new QFileDialog(parent, title, QDir::homePath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setNameFilter(L::ruleFileFilter(QStringLiteral("*.json")));
    QObject::connect(dialog, &QDialog::accepted, parent,
                     [dialog, chosen] { chosen(dialog->selectedFiles().value(0)); });
    return dialog;
}

void tell(const QString &title, const QString &text, QWidget *parent) {
    (new AlertSheet({.title = title, .text = text, .acceptTitle = L::close(), .isWarning = true},
                    parent))
        ->open();
}

void addRules(const std::vector<ShortcutRule> &rules, const PreferencesServices &services,
              QWidget *parent, const std::function<void()> &added) {
    const auto import = services.manager.importRules(rules);
    if (!import) {
        tell(L::importTitle(), L::importNotSaved(), parent);
        return;
    }
    services.showToast(L::imported(std::ssize(import->additions)), {}, {});
    added();
}

}  // namespace

void importRulesByUser(const PreferencesServices &services, QWidget *parent,
                       const std::function<void()> &added) {
    QFileDialog *const dialog =
        makeDialog(L::importTitle(), parent, [services, parent, added](const QString &path) {
            importRulesFrom(path, services, parent, added);
        });
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->open();
}

void importRulesFrom(const QString &path, const PreferencesServices &services, QWidget *parent,
                     const std::function<void()> &added) {
    QString problem;
    auto rules = readRulesToImport(path, problem);
    if (!rules) {
        tell(L::importTitle(), L::importUnreadable(QFileInfo(path).fileName()), parent);
        return;
    }
    const RuleImport import = planImport(services.manager.rules(), *rules);
    auto *const sheet = new ImportSheet(import, services.catalog, services.keyboardLayout, parent);
    QObject::connect(sheet, &QDialog::accepted, parent,
                     [rules = std::move(*rules), services, parent, added] {
                         addRules(rules, services, parent, added);
                     });
    sheet->open();
}

void exportRulesByUser(const PreferencesServices &services, QWidget *parent) {
    QFileDialog *const dialog = makeDialog(
        L::exportTitle(), parent,
        [services, parent](const QString &path) { exportRulesTo(path, services, parent); });
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("json"));
    dialog->selectFile(QStringLiteral("kestrelbay-shortcuts.json"));
    dialog->open();
}

void exportRulesTo(const QString &path, const PreferencesServices &services, QWidget *parent) {
    const ShortcutManager &manager = services.manager;
    const QString ownFile = RuleFile::pathIn(manager.storageDirectory());
    const QString name = QFileInfo(path).fileName();
    switch (exportRules(manager.rules(), ownFile, path)) {
        case RuleExport::Done:
            services.showToast(L::exported(abbreviatedPath(path, QDir::homePath())), {}, {});
            break;
        case RuleExport::NoRules:
            tell(L::exportTitle(), L::exportNoRules(), parent);
            break;
        case RuleExport::OtherFile:
            tell(L::exportTitle(), L::exportOtherFile(name), parent);
            break;
        case RuleExport::NotWritten:
            tell(L::exportTitle(), L::exportNotWritten(name), parent);
            break;
    }
}

}  // namespace kestrelbay
