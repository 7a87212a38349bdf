#include "hotkeys/ShortcutManager.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hotkeys/TapProblems.h"
#include "platform/SystemLog.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

ShortcutManager *sharedManager = nullptr;

QString ruleFilePath(const QString &storageDirectory) {
    if (storageDirectory.isEmpty())
        qFatal("KestrelBay: there is no folder for application data");
    return RuleFile::pathIn(storageDirectory);
}

/// Those of the first list, both sorted, whose hotkey the second has not, however it is held.
std::vector<RefusedHotkey> onlyIn(const std::vector<RefusedHotkey> &these,
                                  const std::vector<RefusedHotkey> &others) {
    std::vector<RefusedHotkey> only;
    std::ranges::set_difference(these, others, std::back_inserter(only), {}, &RefusedHotkey::hotkey,
                                &RefusedHotkey::hotkey);
    return only;
}

}  // namespace

ShortcutManager::ShortcutManager(const QString &storageDirectory, EventTap &tap, SystemLog &log,
                                 Hooks hooks)
    : tap_(tap),
      log_(log),
      hooks_(std::move(hooks)),
      storageDirectory_(storageDirectory),
      file_(ruleFilePath(storageDirectory)) {
    // Where that fails, so does every save.
    file_.makeFolder();
    loadRules();
    setupEventTap();
}

ShortcutManager::~ShortcutManager() {
    // Nobody is told: whoever listens may ask, and there is nothing left to ask.
    removeTap();
    if (sharedManager == this)
        sharedManager = nullptr;
}

ShortcutManager &ShortcutManager::shared() {
    Q_ASSERT(sharedManager);
    return *sharedManager;
}

void ShortcutManager::setShared(ShortcutManager &manager) {
    sharedManager = &manager;
}

void ShortcutManager::loadRules() {
    RuleFile::LoadResult loaded = file_.load();
    ruleFileProblem_ = loaded.problem;
    tellRuleFileProblem();
    rules_ = std::move(loaded.rules);
    rulesWereChanged();
}

ShortcutManager::RuleFileNews ShortcutManager::takeInRuleFile() {
    std::optional<RuleFile::LoadResult> loaded = file_.loadIfChanged();
    if (!loaded)
        return RuleFileNews::None;
    if (loaded->status != RuleFile::LoadStatus::Ok) {
        // What is in memory is the better copy.
        ruleFileProblem_ =
            loaded->status == RuleFile::LoadStatus::Missing ? u"it is gone"_s : loaded->problem;
        return RuleFileNews::Unusable;
    }
    ruleFileProblem_.clear();
    keepKnownIds(*loaded, rules_);
    if (loaded->rules == rules_)
        return RuleFileNews::None;
    rules_ = std::move(loaded->rules);
    rulesWereChanged();
    if (hooks_.rulesTakenIn)
        hooks_.rulesTakenIn();
    return RuleFileNews::TakenIn;
}

void ShortcutManager::tellRuleFileProblem() {
    if (!ruleFileProblem_.isEmpty())
        log_.write(u"KestrelBay [WARN] rules.json cannot be used: "_s +
                   std::exchange(ruleFileProblem_, {}));
}

/// Before a change, whose save would replace the file.
ShortcutManager::RuleFileNews ShortcutManager::followRuleFile() {
    const RuleFileNews news = takeInRuleFile();
    tellRuleFileProblem();
    return news;
}

bool ShortcutManager::saveRules() {
    tap_.deliverWaiting();
    return file_.save(rules_);
}

void ShortcutManager::addRule(const ShortcutRule &rule) {
    followRuleFile();
    rules_.push_back(rule);
    rulesWereChanged();
    saveRules();
}

void ShortcutManager::insertRule(const ShortcutRule &rule, std::size_t place) {
    followRuleFile();
    if (std::ranges::find(rules_, rule.id, &ShortcutRule::id) != rules_.end())
        return;
    const std::size_t index = std::min(place, rules_.size());
    rules_.insert(rules_.begin() + static_cast<std::ptrdiff_t>(index), rule);
    rulesWereChanged();
    saveRules();
}

std::optional<RuleImport> ShortcutManager::importRules(const Rules &rules) {
    followRuleFile();
    RuleImport import = planImport(rules_, rules);
    if (import.additions.empty())
        return import;
    const Rules before = rules_;
    for (const RuleImport::Addition &addition : import.additions)
        rules_.push_back(addition.rule);
    rulesWereChanged();
    if (saveRules())
        return import;
    rules_ = before;
    rulesWereChanged();
    return std::nullopt;
}

void ShortcutManager::updateRule(const ShortcutRule &rule) {
    const auto findRule = [&] { return std::ranges::find(rules_, rule.id, &ShortcutRule::id); };
    auto found = findRule();
    if (found == rules_.end())
        return;
    const ShortcutRule before = *found;
    followRuleFile();
    found = findRule();
    if (found == rules_.end())
        return;
    *found = merged(before, rule, *found);
    rulesWereChanged();
    saveRules();
}

std::optional<ShortcutRule> ShortcutManager::removeRule(std::ptrdiff_t index) {
    if (index < 0 || index >= std::ssize(rules_))
        return std::nullopt;
    const QUuid id = rules_[static_cast<std::size_t>(index)].id;
    if (followRuleFile() == RuleFileNews::TakenIn)
        index = std::ranges::find(rules_, id, &ShortcutRule::id) - rules_.begin();
    if (index == std::ssize(rules_))
        return std::nullopt;
    const ShortcutRule removed = rules_[static_cast<std::size_t>(index)];
    rules_.erase(rules_.begin() + index);
    rulesWereChanged();
    saveRules();
    return removed;
}

void ShortcutManager::moveRule(std::ptrdiff_t source, std::ptrdiff_t destination) {
    const std::ptrdiff_t count = std::ssize(rules_);
    const auto isInside = [count](std::ptrdiff_t index) { return index >= 0 && index < count; };
    if (source == destination || !isInside(source) || !isInside(destination))
        return;
    if (followRuleFile() == RuleFileNews::TakenIn)
        return;
    const auto first = rules_.begin();
    if (source < destination)
        std::rotate(first + source, first + source + 1, first + destination + 1);
    else
        std::rotate(first + destination, first + source, first + source + 1);
    rulesWereChanged();
    saveRules();
}

void ShortcutManager::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    publishWantedHotkeys();
}

void ShortcutManager::setupEventTap() {
    installTap();
    tellRefusals();
    endRecordingWithoutTap();
}

void ShortcutManager::teardownEventTap() {
    removeTap();
    tellRefusals();
    endRecordingWithoutTap();
}

void ShortcutManager::reinstallEventTap() {
    removeTap();
    setupEventTap();
}

void ShortcutManager::installTap() {
    if (installedTap_)
        return;
    const bool installed = tap_.install({
        .event = [this](EventType type, KeyCode keyCode,
                        ModifierFlags flags) { return eventTapCallback(type, keyCode, flags); },
        .hotkeyPressed = [this](const Hotkey &hotkey) { hotkeyPressed(hotkey); },
        .purposeOf = [this](const Hotkey &hotkey) { return purposeOf(hotkey); },
        .refusalsChanged = [this] { noteRefusals(); },
        .triggersChanged =
            [this] {
                if (hooks_.refusalsChanged)
                    hooks_.refusalsChanged();
            },
        .lost = [this] { noteLostTap(); },
        .withheldChanged =
            [this] {
                if (hooks_.withheldChanged)
                    hooks_.withheldChanged();
            },
    });
    const bool wasOtherInstanceThere = std::exchange(
        isOtherInstanceThere_, !installed && tap_.problem() == TapProblem::OtherInstance);
    // An instance that only hands a request over to the other has ended before the second try.
    if (isOtherInstanceThere_ && !wasOtherInstanceThere)
        return;
    if (!installed) {
        logTapProblem();
        return;
    }
    loggedProblem_ = TapProblem::None;
    installedTap_ = &tap_;
    isTapRecording_ = recordingCallback_ && tap_.setRecording(true);
    if (tap_.abilities() == abilities_)
        noteRefusals();
    else
        publishWantedHotkeys();
}

void ShortcutManager::logTapProblem() {
    const TapProblem problem = tap_.problem();
    if (problem == TapProblem::NotPermitted) {
        // At every try: whoever is asked for the permission may be looking at the log.
        log_.write(QStringLiteral(
            "KestrelBay: Failed to create event tap. Accessibility permission required."));
    } else if (std::exchange(loggedProblem_, problem) != problem) {
        log_.write(u"KestrelBay [WARN] No hotkeys: the keyboard cannot be read, "_s +
                   inWords(problem));
    }
}

void ShortcutManager::removeTap() {
    if (!installedTap_)
        return;
    installedTap_ = nullptr;
    isTapRecording_ = false;
    tap_.remove();
}

void ShortcutManager::noteLostTap() {
    installedTap_ = nullptr;
    isTapRecording_ = false;
    tellRefusals();
    endRecordingWithoutTap();
    if (hooks_.tapLost)
        hooks_.tapLost();
}

bool ShortcutManager::setRecordingCallback(RecordingCallback callback, std::function<void()> lost) {
    if (callback && recordingLost_) {
        recordingCallback_ = nullptr;
        const std::function<void()> previousLost = std::exchange(recordingLost_, nullptr);
        previousLost();
    }
    recordingCallback_ = std::move(callback);
    recordingLost_ = std::move(lost);
    if (!recordingCallback_ && hooks_.recordingEnded)
        hooks_.recordingEnded();
    if (!installedTap_)
        return false;
    const bool wanted = recordingCallback_ != nullptr;
    const bool done = installedTap_->setRecording(wanted);
    isTapRecording_ = wanted && done;
    return done;
}

void ShortcutManager::endRecordingWithoutTap() {
    if (!recordingLost_ || isTapRecording_)
        return;
    recordingCallback_ = nullptr;
    // Both before the call, which may start another recording.
    const std::function<void()> lost = std::exchange(recordingLost_, nullptr);
    if (installedTap_)
        installedTap_->setRecording(false);
    if (hooks_.recordingEnded)
        hooks_.recordingEnded();
    lost();
}

std::optional<RefusedHotkey> ShortcutManager::refusal(const ShortcutRule &rule) const {
    const std::optional<Hotkey> hotkey = matchableHotkey(rule);
    if (!installedTap_ || !hotkey)
        return std::nullopt;
    const auto found = std::ranges::find(refusedHotkeys_, *hotkey, &RefusedHotkey::hotkey);
    return found == refusedHotkeys_.end() ? std::nullopt : std::optional(*found);
}

QString ShortcutManager::triggerText(const ShortcutRule &rule) const {
    const std::optional<Hotkey> hotkey = matchableHotkey(rule);
    return installedTap_ && hotkey ? installedTap_->triggerText(*hotkey) : QString();
}

QString ShortcutManager::purposeOf(const Hotkey &hotkey) const {
    const auto found = std::ranges::find(rules_, hotkey, matchableHotkey);
    return found == rules_.end() ? QString() : found->appName;
}

bool ShortcutManager::needsSides(const ShortcutRule &rule) const {
    const std::optional<Hotkey> hotkey = matchableHotkey(rule);
    return !canTellSides() && hotkey && namesSide(hotkey->modifierFlags);
}

bool ShortcutManager::canTellSides() const {
    return !installedTap_ || installedTap_->abilities().tellsSides;
}

bool ShortcutManager::canRecordAllKeys() const {
    return !installedTap_ || installedTap_->recordsAllKeys();
}

EventVerdict ShortcutManager::eventTapCallback(EventType type, KeyCode keyCode,
                                               ModifierFlags flags) {
    if (type == EventType::TapDisabledByTimeout || type == EventType::TapDisabledByUserInput) {
        const auto *const reason =
            type == EventType::TapDisabledByTimeout ? "TIMEOUT" : "USER_INPUT";
        log_.write(QStringLiteral("KestrelBay [WARN] EventTap disabled: %1 — main thread may "
                                  "have been blocked")
                       .arg(QLatin1StringView(reason)));
        if (installedTap_)
            installedTap_->enable();
        // Enabling may have shown that it is lost.
        if (installedTap_) {
            isTapRecording_ = recordingCallback_ && installedTap_->setRecording(true);
            endRecordingWithoutTap();
        }
        return EventVerdict::Pass;
    }
    if (type == EventType::FlagsChanged && isModifierKeyCode(keyCode)) {
        if (heldModifierCodes_.erase(keyCode) == 0)
            heldModifierCodes_.insert(keyCode);
    }
    if (recordingCallback_) {
        // A copy, because the recorder takes itself out from inside the call.
        const RecordingCallback callback = recordingCallback_;
        return callback(type, keyCode, flags);
    }
    if (type == EventType::KeyDown &&
        fireFirstMatch(keyCode, buildDetailedFlags(heldModifierCodes_)))
        return EventVerdict::Swallow;
    return EventVerdict::Pass;
}

void ShortcutManager::hotkeyPressed(const Hotkey &hotkey) const {
    if (!recordingCallback_)
        fireFirstMatch(hotkey.keyCode, hotkey.modifierFlags);
}

bool ShortcutManager::fireFirstMatch(KeyCode keyCode, ModifierFlags flags) const {
    if (!isEnabled_)
        return false;
    const std::optional<std::size_t> match = matcher_.firstMatch(keyCode, flags);
    if (!match)
        return false;
    // A disabled rule keeps its hotkey: nobody gets the key.
    fire(rules_[*match]);
    return true;
}

bool ShortcutManager::runRule(const QUuid &id) const {
    const auto found = std::ranges::find(rules_, id, &ShortcutRule::id);
    if (found == rules_.end())
        return false;
    // A rule without an application has no hotkey either.
    if (isEnabled_ && !found->appPath.isEmpty())
        fire(*found);
    return true;
}

void ShortcutManager::fire(const ShortcutRule &rule) const {
    if (rule.isEnabled && hooks_.ruleFired)
        hooks_.ruleFired(rule);
}

void ShortcutManager::rulesWereChanged() {
    matcher_ = HotkeyMatcher(rules_);
    publishWantedHotkeys();
    if (hooks_.rulesChanged)
        hooks_.rulesChanged(rules_);
}

void ShortcutManager::publishWantedHotkeys() {
    wantedHotkeys_ = isEnabled_ ? matcher_.matchableHotkeys() : std::vector<Hotkey>();
    abilities_ = tap_.abilities();
    restingHotkeys_.clear();
    if (!abilities_.tellsSides)
        std::erase_if(wantedHotkeys_, [this](const Hotkey &hotkey) {
            const bool rests = namesSide(hotkey.modifierFlags);
            if (rests)
                restingHotkeys_.push_back(hotkey);
            return rests;
        });
    tap_.setWantedHotkeys(wantedHotkeys_);
    noteRefusals();
}

void ShortcutManager::logRestingHotkeys() {
    std::vector<Hotkey> fresh;
    std::ranges::set_difference(restingHotkeys_, loggedRestingHotkeys_, std::back_inserter(fresh));
    loggedRestingHotkeys_ = restingHotkeys_;
    for (const Hotkey &hotkey : fresh)
        logForRulesOf(hotkey, u"KestrelBay [WARN] hotkey "_s,
                      u" rests: this session does not tell left modifier keys from right ones"_s);
}

void ShortcutManager::noteRefusals() {
    // A tap that is not installed refuses nothing, which is no news of other programs.
    if (!installedTap_)
        return;
    logRestingHotkeys();
    std::vector<RefusedHotkey> refused = installedTap_->refusedHotkeys();
    std::ranges::sort(refused);
    const std::vector<RefusedHotkey> before = std::exchange(refusedHotkeys_, std::move(refused));

    for (const RefusedHotkey &now : onlyIn(refusedHotkeys_, before))
        logForRulesOf(now.hotkey, u"KestrelBay [WARN] hotkey "_s,
                      now.isUnassigned ? u" has no keys in the desktop's settings"_s
                                       : u" is held by another program"_s);

    for (const RefusedHotkey &then : onlyIn(before, refusedHotkeys_)) {
        // Those that are no longer wanted were given up, not granted.
        if (std::ranges::binary_search(wantedHotkeys_, then.hotkey))
            logForRulesOf(then.hotkey, u"KestrelBay: hotkey "_s,
                          then.isUnassigned ? u" has keys in the desktop's settings now"_s
                                            : u" is no longer held by another program"_s);
    }
    tellRefusals();
}

void ShortcutManager::tellRefusals() {
    const std::vector<RefusedHotkey> refused =
        installedTap_ ? refusedHotkeys_ : std::vector<RefusedHotkey>();
    const bool areOthers = std::exchange(toldRefusals_, refused) != refused;
    const bool areSidesOthers = std::exchange(toldSides_, canTellSides()) != canTellSides();
    if ((areOthers || areSidesOthers) && hooks_.refusalsChanged)
        hooks_.refusalsChanged();
}

void ShortcutManager::logForRulesOf(const Hotkey &hotkey, const QString &prefix,
                                    const QString &suffix) const {
    for (const ShortcutRule &rule : rules_) {
        if (matchableHotkey(rule) == hotkey)
            log_.write(prefix + rule.hotkeyString() + u" of "_s + rule.appName + suffix);
    }
}

}  // namespace kestrelbay
