#include "platform/linux/wayland/sway/SwayConfiguration.h"

#include <wordexp.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include <QByteArrayList>
#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QStringList>

namespace kestrelbay::sway {

namespace {

/// A configuration is written by hand.
constexpr qint64 kLongestFile = qint64{4} * 1024 * 1024;
/// Blocks in blocks; sway knows two levels.
constexpr std::size_t kDeepestBlock = 16;
/// Variables that grow by each other are nobody's configuration.
constexpr qsizetype kLongestValue = 4096;

/// Words, of which a quoted one may have spaces in it. Quotes are taken off.
QList<QByteArray> wordsOf(const QByteArray &line) {
    QList<QByteArray> words;
    QByteArray word;
    bool isWord = false;
    char quote = 0;
    for (const char c : line) {
        if (quote != 0 ? c == quote : c == '"' || c == '\'') {
            quote = quote != 0 ? '\0' : c;
            isWord = true;
        } else if (quote == 0 && (c == ' ' || c == '\t')) {
            if (isWord)
                words.append(std::exchange(word, {}));
            isWord = false;
        } else {
            word += c;
            isWord = true;
        }
    }
    if (isWord)
        words.append(word);
    return words;
}

/// What a shell makes of a path with ~, variables and wild cards. None where it would run commands.
std::optional<QStringList> expanded(const QByteArray &pattern, const QString &folder) {
    QByteArray text;
    if (!QByteArray("/~$").contains(pattern.left(1))) {
        for (const char c : QFile::encodeName(folder) + '/')
            text.append('\\').append(c);
    }
    text += pattern;
    wordexp_t result{};
    const int error = ::wordexp(text.constData(), &result, WRDE_NOCMD);
    if (error == WRDE_CMDSUB)
        return std::nullopt;
    if (error != 0)
        return QStringList();
    QStringList paths;
    for (const char *const path : std::span(result.we_wordv, result.we_wordc))
        paths.append(QFile::decodeName(path));
    ::wordfree(&result);
    return paths;
}

class Reader {
public:
    void read(const QByteArray &text, const QString &path) {
        // Once each, as sway does; so none includes itself.
        if (!seen_.insert(QFileInfo(path).canonicalFilePath()).second)
            return;
        const QString folder = QFileInfo(path).absolutePath();
        std::vector<QByteArray> blocks;
        QByteArray line;
        for (const QByteArray &part : text.split('\n')) {
            line += part;
            if (line.endsWith('\\')) {
                line.chop(1);
                continue;
            }
            readLine(std::exchange(line, {}).trimmed(), folder, blocks);
        }
    }

    [[nodiscard]] SwayConfiguration take() { return std::move(configuration_); }

private:
    /// `blocks` are the beginnings of the blocks that the line is in.
    void readLine(const QByteArray &line, const QString &folder, std::vector<QByteArray> &blocks) {
        if (line.isEmpty() || line.startsWith('#'))
            return;
        if (line == "}") {
            if (!blocks.empty())
                blocks.pop_back();
            return;
        }
        const QByteArray whole = blocks.empty() ? line : blocks.back() + ' ' + line;
        if (line.endsWith('{')) {
            if (blocks.size() < kDeepestBlock)
                blocks.push_back(whole.chopped(1).trimmed());
            return;
        }
        obey(whole, folder);
    }

    void obey(const QByteArray &line, const QString &folder) {
        const bool isDefinition = line.startsWith("set ");
        QList<QByteArray> words = wordsOf(isDefinition ? line : withVariables(line));
        const QByteArray command = words.isEmpty() ? QByteArray() : words.takeFirst();
        if (isDefinition && words.size() > 1) {
            const QByteArray name = words.takeFirst();
            if (const QByteArray value = withVariables(words.join(' '));
                !name.isEmpty() && value.size() <= kLongestValue)
                variables_[name] = value;
        } else if (command == "include") {
            include(words.join(' '), folder);
        } else if (command == "bindsym" || command == "bindcode") {
            if (const auto binding = bindingOf(command == "bindcode", words))
                configuration_.bindings.push_back(*binding);
        } else if (command == "unbindsym" || command == "unbindcode") {
            unbind(command == "unbindcode", words);
        } else if (command == "input" && words.size() > 2) {
            setKeyboard(words[1], words.sliced(2).join(' '), folder);
        }
    }

    void include(const QByteArray &pattern, const QString &folder) {
        const std::optional<QStringList> paths = expanded(pattern, folder);
        if (!paths)
            configuration_.unread.push_back("include " + pattern);
        for (const QString &path : paths.value_or(QStringList())) {
            if (const std::optional<QByteArray> text = textOf(path))
                read(*text, path);
        }
    }

    static std::optional<QByteArray> textOf(const QString &path) {
        QFile file(path);
        if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
            return std::nullopt;
        return file.read(kLongestFile);
    }

    static std::optional<WrittenBinding> bindingOf(bool isByCode, const QList<QByteArray> &words) {
        const auto keys = std::ranges::find_if(
            words, [](const QByteArray &word) { return !word.startsWith("--"); });
        return keys == words.end()
                   ? std::nullopt
                   : std::optional(WrittenBinding{
                         .isByCode = isByCode,
                         .keys = *keys,
                         .command = QByteArrayList(keys + 1, words.end()).join(' ')});
    }

    void unbind(bool isByCode, const QList<QByteArray> &words) {
        const std::optional<WrittenBinding> taken = bindingOf(isByCode, words);
        std::erase_if(configuration_.bindings, [&taken](const WrittenBinding &binding) {
            return taken && binding.isByCode == taken->isByCode && binding.keys == taken->keys;
        });
    }

    void setKeyboard(const QByteArray &name, const QByteArray &value, const QString &folder) {
        SwayConfiguration::Keyboard &keyboard = configuration_.keyboard;
        if (name == "xkb_file") {
            for (const QString &path : expanded(value, folder).value_or(QStringList()))
                keyboard.keymap = textOf(path).value_or(QByteArray());
        }
        for (const auto &[known, place] :
             {std::pair{"xkb_rules", &keyboard.rules}, std::pair{"xkb_model", &keyboard.model},
              std::pair{"xkb_layout", &keyboard.layout},
              std::pair{"xkb_variant", &keyboard.variant},
              std::pair{"xkb_options", &keyboard.options}}) {
            if (name == known)
                *place = value;
        }
    }

    /// Of two variables of which one begins like the other the longer one is meant.
    [[nodiscard]] QByteArray withVariables(const QByteArray &line) const {
        QByteArray result;
        qsizetype position = 0;
        while (position < line.size()) {
            const QByteArrayView rest = QByteArrayView(line).sliced(position);
            const std::pair<const QByteArray, QByteArray> *best = nullptr;
            for (const auto &variable : variables_) {
                if (rest.startsWith(variable.first) &&
                    (best == nullptr || variable.first.size() > best->first.size()))
                    best = &variable;
            }
            result += best != nullptr ? best->second : QByteArray(1, line[position]);
            position += best != nullptr ? best->first.size() : 1;
        }
        return result;
    }

    SwayConfiguration configuration_;
    std::map<QByteArray, QByteArray> variables_;
    std::set<QString> seen_;
};

}  // namespace

SwayConfiguration readConfiguration(const QByteArray &text, const QString &path) {
    Reader reader;
    reader.read(text, path);
    return reader.take();
}

}  // namespace kestrelbay::sway
