#pragma once

namespace kestrelbay::x11 {

class XConnection;

/// Makes this client the one event tap of the display by owning a selection. The
/// server gives it up by itself when the connection ends, however that happens.
/// False when another instance of the program has it.
[[nodiscard]] bool claimTapOwnership(const XConnection &connection);

}  // namespace kestrelbay::x11
