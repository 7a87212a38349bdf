#pragma once

#include <memory>

#include <QString>

namespace kestrelbay::testing {

/// A compositor without a screen that gives one surface at a time the keyboard, and has
/// keyboard-shortcuts-inhibit. Each call has taken effect when it returns.
class FocusCompositor {
public:
    enum class Inhibiting { Granted, AsksTheUser, Lacking };
    enum class Keyboard { Has, Lacks };

    explicit FocusCompositor(Inhibiting inhibiting = Inhibiting::Granted,
                             Keyboard keyboard = Keyboard::Has);
    ~FocusCompositor();
    FocusCompositor(const FocusCompositor &) = delete;
    FocusCompositor &operator=(const FocusCompositor &) = delete;

    [[nodiscard]] QString socketPath() const;

    /// The surface that was made as the so many-th, from 0 on, gets the keyboard.
    void focus(int surface);
    /// Another program's gets it.
    void focusElsewhere();
    /// What the user says, or thinks better of.
    void answer(bool isGranted);

    /// Of which surface no key is kept, granted or not yet; -1 where there is none.
    [[nodiscard]] int inhibited() const;
    [[nodiscard]] int keyboardCount() const;

private:
    struct Server;

    const std::unique_ptr<Server> server_;
};

}  // namespace kestrelbay::testing
