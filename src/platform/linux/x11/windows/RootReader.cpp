#include "platform/linux/x11/windows/RootReader.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>

namespace kestrelbay::x11 {

namespace {

// In units of four bytes, that is windows or atoms. More windows than this are
// nobody's desktop, but somebody's mistake.
constexpr std::uint32_t kMostWindows = 4096;
constexpr std::uint32_t kMostSupported = 1024;

}  // namespace

RootReader::RootReader(const WindowSystem &system) : system_(system) {
    const XConnection &connection = system_.connection();
    if (!connection.isUsable())
        return;
    const std::string selection = "WM_S" + std::to_string(connection.defaultScreen());
    managerSelection_ = internAtoms(connection, std::array<std::string_view, 1>{selection})[0];
}

std::vector<RootReader::Question> RootReader::ask() const {
    const XConnection &connection = system_.connection();
    std::vector<Question> questions;
    questions.reserve(connection.roots().size());
    for (const xcb_window_t root : connection.roots()) {
        const auto ask = [&](WindowAtoms::Name property, xcb_atom_t type, std::uint32_t units) {
            return connection.askProperty(root, system_.atoms()[property], type, units);
        };
        questions.push_back(
            {.stacking = ask("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, kMostWindows),
             .clients = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, kMostWindows),
             .active = ask("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, 1),
             .check = ask("_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, 1),
             .supported = ask("_NET_SUPPORTED", XCB_ATOM_ATOM, kMostSupported)});
    }
    return questions;
}

std::vector<Root> RootReader::take(const std::vector<Question> &questions) const {
    const XConnection &connection = system_.connection();
    const WindowAtoms &atoms = system_.atoms();
    std::vector<Root> roots(questions.size());
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const PropertyReply stacking = connection.takeProperty(questions[i].stacking);
        const PropertyReply clients = connection.takeProperty(questions[i].clients);
        const auto active = propertyWord(connection.takeProperty(questions[i].active));
        const auto check = propertyWord(connection.takeProperty(questions[i].check));
        const PropertyReply supported = connection.takeProperty(questions[i].supported);

        Root &root = roots[i];
        root.root = connection.roots()[i];
        // Small window managers keep no list in stacking order: the newest in front
        // is the best guess then.
        const auto list = propertyWords(propertyWords(stacking).empty() ? clients : stacking);
        std::unordered_set<xcb_window_t> seen;
        for (auto window = list.rbegin(); window != list.rend(); ++window)
            if (*window != XCB_NONE && seen.insert(*window).second)
                root.windows.push_back(*window);
        root.active = active.value_or(XCB_NONE);
        root.request = questions[i].active.sequence;
        root.check = check.value_or(XCB_NONE);
        // When mutter takes over from mutter, the earlier one deletes the later one's
        // announcement, which still owns the window managers' selection.
        if (root.check == XCB_NONE && root.root == connection.root()) {
            root.check = connection.ownerOf(managerSelection_);
            root.isAlive = root.check != XCB_NONE;
        }
        for (const xcb_atom_t ability : propertyWords(supported)) {
            root.abilities.restacksWindows |= ability == atoms["_NET_RESTACK_WINDOW"];
            root.abilities.marksHiddenWindows |= ability == atoms["_NET_WM_STATE_HIDDEN"];
        }
    }
    return roots;
}

void RootReader::discard(const std::vector<Question> &questions) const {
    for (const Question &question : questions)
        for (const auto &cookie : {question.stacking, question.clients, question.active,
                                   question.check, question.supported})
            xcb_discard_reply(system_.connection().get(), cookie.sequence);
}

bool RootReader::reads(xcb_atom_t property) const {
    return system_.atoms().isOneOf(
        property, {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW",
                   "_NET_SUPPORTING_WM_CHECK", "_NET_SUPPORTED"});
}

}  // namespace kestrelbay::x11
