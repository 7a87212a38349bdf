#pragma once

#include <vector>

#include <QString>
#include <QStringList>

namespace kestrelbay::bench {

/// Rows of text with aligned columns: the first one to the left, numbers to the
/// right.
class TextTable {
public:
    explicit TextTable(QStringList header) { rows_.push_back(std::move(header)); }

    void add(QStringList row) { rows_.push_back(std::move(row)); }
    /// Prints it to standard output, under its title.
    void print(const QString &title) const;

private:
    std::vector<QStringList> rows_;
};

}  // namespace kestrelbay::bench
