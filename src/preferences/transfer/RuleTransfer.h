#pragma once

#include <functional>

#include <QString>

#include "preferences/PreferencesServices.h"

class QWidget;

namespace kestrelbay {

// Rules are carried to other machines, as the user chooses the files in sheets over the window
// of `parent`. Each call returns at once; failures are told. The services have to outlive the
// sheets. Main thread.

/// Asks for a file, shows what its rules would add, and adds them if the user says so; then calls
/// `added`.
void importRulesByUser(const PreferencesServices &services, QWidget *parent,
                       const std::function<void()> &added);
/// The same from a file that is chosen already.
void importRulesFrom(const QString &path, const PreferencesServices &services, QWidget *parent,
                     const std::function<void()> &added);

/// Asks where to, and writes all rules there.
void exportRulesByUser(const PreferencesServices &services, QWidget *parent);
/// The same to a place that is chosen already.
void exportRulesTo(const QString &path, const PreferencesServices &services, QWidget *parent);

}  // namespace kestrelbay
