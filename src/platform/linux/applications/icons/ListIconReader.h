#pragma once

#include <QImage>
#include <QString>

#include "platform/ApplicationCatalog.h"
#include "platform/linux/applications/icons/IconThemeFiles.h"

namespace kestrelbay {

/// Reads the icons that desktop entries name, on any one thread, for one list.
class ListIconReader {
public:
    explicit ListIconReader(const ListIcons &icons);

    /// A square of the list's size: the icon of this name or path, in proportion; the
    /// generic one when it can't be found or read.
    [[nodiscard]] QImage read(const QString &name);

private:
    [[nodiscard]] QImage readNamed(const QString &name);
    [[nodiscard]] QImage readFile(const QString &path) const;
    [[nodiscard]] const QImage &generic();

    const int pixels_;
    IconThemeFiles files_;
    QImage generic_;
};

}  // namespace kestrelbay
