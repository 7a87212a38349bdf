#include "preferences/rules/DeleteConfirmationSheet.h"

#include <utility>

#include "settings/L.h"

namespace kestrelbay {

DeleteConfirmationSheet *DeleteConfirmationSheet::open(QWidget *window, const QString &appName,
                                                       std::function<void()> confirmed) {
    auto *sheet = new DeleteConfirmationSheet({.title = L::deleteConfirmTitle(),
                                               .text = L::deleteConfirmMsg(appName),
                                               .acceptTitle = L::deleteConfirmButton(),
                                               .rejectTitle = L::cancel(),
                                               .isWarning = true,
                                               .isDestructive = true},
                                              window);
    connect(sheet, &QDialog::accepted, sheet, std::move(confirmed));
    sheet->QDialog::open();
    return sheet;
}

}  // namespace kestrelbay
