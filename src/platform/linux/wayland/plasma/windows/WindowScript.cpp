#include "platform/linux/wayland/plasma/windows/WindowScript.h"

namespace kestrelbay::plasma {

namespace {

// A call that nobody answers, or with an error, is the end of the line: its function is not called
// then.
constexpr const char *kText = R"js(
const is6 = workspace.windowList !== undefined;

function nameOf(w) {
    return String(w.internalId);
}
function all() {
    return is6 ? workspace.windowList() : workspace.clientList();
}
function active() {
    return is6 ? workspace.activeWindow : workspace.activeClient;
}
function activate(w) {
    if (is6)
        workspace.activeWindow = w;
    else
        workspace.activeClient = w;
}
function typeOf(w) {
    return w.normalWindow ? "normal" : w.dialog ? "dialog" : w.utility ? "utility" : "other";
}
function list() {
    return all().sort((a, b) => b.stackingOrder - a.stackingOrder).map(w => ({
        name: nameOf(w), title: w.caption, pid: w.pid, class: String(w.resourceClass),
        instance: String(w.resourceName), entry: String(w.desktopFileName), type: typeOf(w),
        parent: w.transientFor ? nameOf(w.transientFor) : "", isActive: w === active(),
        isUrgent: w.demandsAttention, isMinimised: w.minimized, isOutOfTaskBars: w.skipTaskbar
    }));
}
function carryOut(question) {
    if (question.list)
        return JSON.stringify(list());
    const windows = all();
    for (const w of windows) {
        if ((question.hide || []).indexOf(nameOf(w)) >= 0)
            w.minimized = true;
    }
    for (const name of question.show || []) {
        for (const w of windows.filter(one => nameOf(one) === name))
            w.minimized = false;
    }
    for (const w of windows.filter(one => nameOf(one) === question.focus))
        activate(w);
    return "";
}
function next(result) {
    callDBus("@CONNECTION@", "@PATH@", "@INTERFACE@", "Next", result, question => {
        let answer = "";
        try {
            if (question)
                answer = carryOut(JSON.parse(question));
        } finally {
            next(answer);
        }
    });
}

(is6 ? workspace.windowActivated : workspace.clientActivated).connect(w => {
    if (w)
        callDBus("@CONNECTION@", "@PATH@", "@INTERFACE@", "Used", nameOf(w));
});
(is6 ? workspace.windowAdded : workspace.clientAdded).connect(() => {
    callDBus("@CONNECTION@", "@PATH@", "@INTERFACE@", "Appeared");
});
next("");
)js";

}  // namespace

QByteArray windowScript(const QByteArray &connection, const QByteArray &path) {
    return QByteArray(kText)
        .replace("@CONNECTION@", connection)
        .replace("@PATH@", path)
        .replace("@INTERFACE@", kScriptInterface);
}

}  // namespace kestrelbay::plasma
