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

std::vector<RootReader::Question> RootReader::ask(const std::vector<Root> *known) const {
    const XConnection &connection = system_.connection();
    const std::vector<xcb_window_t> &roots = connection.roots();
    std::vector<Question> questions(roots.size());
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const auto ask = [&](WindowAtoms::Name property, xcb_atom_t type, std::uint32_t units) {
            return connection.askProperty(roots[i], system_.atoms()[property], type, units);
        };
        questions[i].stacking = ask("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, kMostWindows);
        questions[i].active = ask("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, 1);
        if (known == nullptr || !(*known)[i].listsStacking)
            questions[i].manager = Question::OfManager{
                .clients = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, kMostWindows),
                .check = ask("_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, 1),
                .supported = ask("_NET_SUPPORTED", XCB_ATOM_ATOM, kMostSupported)};
    }
    return questions;
}

std::vector<Root> RootReader::take(const std::vector<Question> &questions,
                                   const std::vector<Root> *known) const {
    const XConnection &connection = system_.connection();
    bool isComplete = true;
    std::vector<Root> roots(questions.size());
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const PropertyReply stacking = connection.takeProperty(questions[i].stacking);
        const auto active = propertyWord(connection.takeProperty(questions[i].active));
        auto list = propertyWords(stacking);
        Root &root = roots[i];
        PropertyReply clients;
        if (questions[i].manager) {
            root.root = connection.roots()[i];
            root.listsStacking = !list.empty();
            clients = connection.takeProperty(questions[i].manager->clients);
            takeManager(*questions[i].manager, root);
        } else {
            root = (*known)[i];
            root.windows.clear();
            isComplete = isComplete && !list.empty();
        }
        root.active = active.value_or(XCB_NONE);
        root.request = questions[i].active.sequence;
        // Small window managers keep no list in stacking order: the newest in front
        // is the best guess then.
        if (list.empty())
            list = propertyWords(clients);
        std::unordered_set<xcb_window_t> seen;
        for (auto window = list.rbegin(); window != list.rend(); ++window)
            if (*window != XCB_NONE && seen.insert(*window).second)
                root.windows.push_back(*window);
    }
    if (!isComplete)
        roots.clear();
    return roots;
}

void RootReader::takeManager(const Question::OfManager &question, Root &root) const {
    const XConnection &connection = system_.connection();
    const WindowAtoms &atoms = system_.atoms();
    root.check = propertyWord(connection.takeProperty(question.check)).value_or(XCB_NONE);
    const PropertyReply supported = connection.takeProperty(question.supported);
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

void RootReader::discard(const std::vector<Question> &questions) const {
    const auto discard = [this](xcb_get_property_cookie_t cookie) {
        xcb_discard_reply(system_.connection().get(), cookie.sequence);
    };
    for (const Question &question : questions) {
        discard(question.stacking);
        discard(question.active);
        if (const auto &manager = question.manager) {
            discard(manager->clients);
            discard(manager->check);
            discard(manager->supported);
        }
    }
}

bool RootReader::reads(xcb_atom_t property) const {
    return tellsOfManager(property) ||
           system_.atoms().isOneOf(
               property, {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW"});
}

bool RootReader::tellsOfManager(xcb_atom_t property) const {
    return system_.atoms().isOneOf(property, {"_NET_SUPPORTING_WM_CHECK", "_NET_SUPPORTED"});
}

}  // namespace kestrelbay::x11
