#include "TextTable.h"

#include <algorithm>
#include <cstdio>

namespace kestrelbay::bench {

void TextTable::print(const QString &title) const {
    std::vector<qsizetype> widths(static_cast<std::size_t>(rows_.front().size()), 0);
    for (const QStringList &row : rows_) {
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row.value(static_cast<qsizetype>(i)).size());
    }
    QString text = u'\n' + title + u'\n';
    for (const QStringList &row : rows_) {
        QString line;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const QString cell = row.value(static_cast<qsizetype>(i));
            line +=
                i == 0 ? cell.leftJustified(widths[i]) : u' ' + cell.rightJustified(widths[i] + 1);
        }
        text += line + u'\n';
    }
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

}  // namespace kestrelbay::bench
