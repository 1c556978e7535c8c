#pragma once

#include "platform/linux/clipboard/SelectionAccess.h"

#include <chrono>

namespace brenvale {

/// Reads a selection as text; nothing where it has none. `access` outlives the answer. On the clipboard's
/// thread.
void readText(SelectionAccess& access, Selection selection,
              std::move_only_function<void(std::optional<QString>)> answer);

/// Reads a selection in as many formats as its owner gives within `patience` and a limit of their size, text
/// first. `access` outlives the answer. On the clipboard's thread.
void readContents(SelectionAccess& access, Selection selection, std::chrono::milliseconds patience,
                  std::move_only_function<void(ClipboardContents)> answer);

} // namespace brenvale
