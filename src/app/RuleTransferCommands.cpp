#include "app/RuleTransferCommands.h"

#include <cstdlib>
#include <istream>
#include <ostream>
#include <string>

#include <QStringList>

#include "app/CommandLine.h"
#include "model/RuleExport.h"
#include "model/RuleFile.h"
#include "model/RuleImport.h"
#include "model/RuleJson.h"
#include "model/TrimmedText.h"
#include "platform/ApplicationCatalog.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

using namespace Qt::StringLiterals;

constexpr Language kLanguage = Language::en;

QString line(const ShortcutRule &rule, const QStringList &remarks) {
    const QString hotkey = rule.hotkeyString();
    QStringList columns{rule.appName.isEmpty() ? u"-"_s : rule.appName,
                        hotkey.isEmpty() ? u"-"_s : hotkey};
    columns += rule.argumentKind == ArgumentKind::None ? rule.appPath
                                                       : rule.appPath + u' ' + rule.launchArguments;
    if (!remarks.isEmpty())
        columns += u'(' + remarks.join(u"; ") + u')';
    for (QString &column : columns)
        column = onOneLine(column);
    return u"  "_s + columns.join(u'\t') + u'\n';
}

QString inWords(const RuleImport &import, const ApplicationCatalog &catalog) {
    QString text = import.additions.empty() ? u"There is nothing to add.\n"_s : u"To be added:\n"_s;
    for (const RuleImport::Addition &addition : import.additions) {
        QStringList remarks;
        if (catalog.nameOfFile(addition.rule.appPath).isEmpty())
            remarks += L::importNotInstalled.in(kLanguage);
        if (addition.lostHotkey)
            remarks += L::importHotkeyTaken.in(kLanguage);
        if (!addition.rule.isEnabled)
            remarks += L::importIsDisabled.in(kLanguage);
        text += line(addition.rule, remarks);
    }
    for (const RuleImport::LeftOut &leftOut : import.leftOut) {
        const bool isThere = leftOut.reason == RuleImport::Reason::AlreadyThere;
        const LText &reason = isThere ? L::importAlreadyThere : L::importNoApplication;
        text += line(leftOut.rule, {reason.in(kLanguage)});
    }
    return text;
}

QString ruleFileProblem(const RuleFile::LoadResult &loaded) {
    return loaded.status == RuleFile::LoadStatus::Unusable
               ? u"rules.json cannot be used: "_s + loaded.problem
               : QString();
}

}  // namespace

int exportRulesCommand(const QString &storageDirectory, const QString &file) {
    const QString ownFile = RuleFile::pathIn(storageDirectory);
    const RuleFile::LoadResult loaded = RuleFile(ownFile).load();
    if (const QString problem = ruleFileProblem(loaded); !problem.isEmpty())
        return fail(problem);
    switch (exportRules(loaded.rules, ownFile, file)) {
        case RuleExport::Done:
            return EXIT_SUCCESS;
        case RuleExport::NoRules:
            return fail(u"there are no rules to export"_s);
        case RuleExport::OtherFile:
            return fail(file + u" holds something other than exported rules"_s);
        case RuleExport::NotWritten:
            break;
    }
    return fail(file + u" could not be written"_s);
}

int ImportCommand::run(const QString &file) const {
    QString problem;
    const auto rules = readRulesToImport(file, problem);
    if (!rules)
        return fail(file + u" cannot be imported: "_s + problem);
    const RuleFile::LoadResult loaded = RuleFile(RuleFile::pathIn(storageDirectory)).load();
    problem = ruleFileProblem(loaded);
    if (!problem.isEmpty())
        return fail(problem);
    const RuleImport import = planImport(loaded.rules, *rules);
    out << inWords(import, catalog).toStdString() << std::flush;
    if (import.additions.empty())
        return EXIT_SUCCESS;
    if (!isConfirmed && !canAsk)
        return fail(u"nothing was added: say --yes, as there is nobody to ask"_s);
    return isWanted() ? add(*rules) : fail(u"nothing was added"_s);
}

bool ImportCommand::isWanted() const {
    if (isConfirmed)
        return true;
    out << "Add them? [y/N] " << std::flush;
    std::string answer;
    std::getline(in, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

int ImportCommand::add(const std::vector<ShortcutRule> &rules) const {
    using Answer = RunningInstance::ImportAnswer;
    switch (handOver(QString::fromUtf8(encodeRules(rules)))) {
        case Answer::Added:
            return EXIT_SUCCESS;
        case Answer::NotAdded:
            return fail(u"the running instance could not save them, so nothing was added"_s);
        case Answer::NoAnswer:
            return fail(u"the running instance does not answer"_s);
        case Answer::Nobody:
            break;
    }
    return addToFile(rules);
}

int ImportCommand::addToFile(const std::vector<ShortcutRule> &rules) const {
    RuleFile file(RuleFile::pathIn(storageDirectory));
    // Once more, as the answer may have taken its time.
    RuleFile::LoadResult loaded = file.load();
    if (const QString problem = ruleFileProblem(loaded); !problem.isEmpty())
        return fail(problem);
    for (const RuleImport::Addition &addition : planImport(loaded.rules, rules).additions)
        loaded.rules.push_back(addition.rule);
    return file.save(loaded.rules) ? EXIT_SUCCESS : fail(u"rules.json could not be written"_s);
}

}  // namespace kestrelbay
