#include "platform/linux/clipboard/DesktopPasteboard.h"

#include <utility>

namespace brenvale {

/// Where a text follows at once it takes the place of the contents in one step: for clipboard managers an
/// empty clipboard between the two is a reason to put the old contents back.
void DesktopPasteboard::clearContents() {
    isToBeCleared_ = true;
    main_.async([this] {
        if (std::exchange(isToBeCleared_, false)) {
            service_.own(Selection::clipboard, {}, [this] { toolkit_.clearContents(); });
        }
    });
}

void DesktopPasteboard::setString(const QString& text) {
    isToBeCleared_ = false;
    service_.own(Selection::clipboard, ClipboardContents::ofText(text),
                 [this, text] { toolkit_.setString(text); });
}

void DesktopPasteboard::string(TextAnswer answer) {
    service_.readText(Selection::clipboard, std::move(answer),
                      [this](TextAnswer refused) { toolkit_.string(std::move(refused)); });
}

} // namespace brenvale
