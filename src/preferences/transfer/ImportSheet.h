#pragma once

#include "model/RuleImport.h"
#include "ui/windows/Sheet.h"

class QTreeWidget;

namespace kestrelbay {

class ApplicationCatalog;
class KeyboardLayout;

/// Shows what an import would add and what it leaves out, each with a remark where there is one.
/// Accepted when the user wants it, which can be only where there is something to add.
class ImportSheet final : public Sheet {
    Q_OBJECT

public:
    ImportSheet(const RuleImport &import, const ApplicationCatalog &catalog,
                const KeyboardLayout &layout, QWidget *parent);

private:
    void fill(const RuleImport &import, const ApplicationCatalog &catalog);
    void addRow(const ShortcutRule &rule, const QString &remark, bool isAdded);

    const KeyboardLayout &layout_;
    QTreeWidget *list_;
};

}  // namespace kestrelbay
