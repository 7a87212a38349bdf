#include "app/process/QtArguments.h"

namespace kestrelbay {

QtArguments::QtArguments(int argc, char **argv, const QString &platform)
    : platform_(platform.toLocal8Bit()), values_(argv, argv + argc) {
    if (!platform_.isEmpty() && argc > 0)
        values_.insert(values_.begin() + 1, {option_.data(), platform_.data()});
    count_ = static_cast<int>(values_.size());
    values_.push_back(nullptr);
}

}  // namespace kestrelbay
