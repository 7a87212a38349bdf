#pragma once

#include <cstdint>

#include <QString>
#include <QStringList>

#include "platform/linux/applications/entries/CommandLine.h"

namespace kestrelbay {

enum class Told : std::uint8_t { Nothing, File, Module, Text };

/// What an interpreter (not Java) is told to run. Nothing for other programs.
struct ToldToInterpreter {
    Told what = Told::Nothing;
    QString word;
};
[[nodiscard]] ToldToInterpreter toldToInterpreter(const QStringList &words);

/// Names the program that an interpreter runs so that no other program has that name: by the
/// path of its file, links resolved, or else by what tells the interpreter where to find it,
/// which is a text with spaces and begins with the interpreter's name. Empty when there is no
/// such file, when the words do not tell, and for other programs. The same program has the
/// same name in an Exec line and among the words of its process.
[[nodiscard]] QString interpretedProgram(const CommandLine &command);

}  // namespace kestrelbay
