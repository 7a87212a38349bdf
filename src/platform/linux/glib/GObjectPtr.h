#pragma once

#include <memory>

#include <QString>
#include <QStringList>

#include <gio/gio.h>

namespace kestrelbay {

template <auto Function>
struct ReleaseWith {
    template <class T>
    void operator()(T *handle) const {
        Function(handle);
    }
};

/// Owner of one reference to a GObject.
template <class T>
using GObjectPtr = std::unique_ptr<T, ReleaseWith<g_object_unref>>;

using GCharPtr = std::unique_ptr<char, ReleaseWith<g_free>>;
using GStringList = std::unique_ptr<char *, ReleaseWith<g_strfreev>>;
using GErrorPtr = std::unique_ptr<GError, ReleaseWith<g_error_free>>;
using GVariantPtr = std::unique_ptr<GVariant, ReleaseWith<g_variant_unref>>;
using GSourcePtr = std::unique_ptr<GSource, ReleaseWith<g_source_unref>>;

/// No list reads as an empty one.
[[nodiscard]] inline QStringList textsOf(const GStringList &list) {
    QStringList texts;
    for (char **text = list.get(); text && *text; ++text)
        texts.append(QString::fromUtf8(*text));
    return texts;
}

}  // namespace kestrelbay
