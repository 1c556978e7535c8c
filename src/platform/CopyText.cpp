#include "platform/CopyText.h"

#include "platform/Pasteboard.h"

namespace brenvale {

void copyText(Pasteboard& pasteboard, const QString& text) {
    pasteboard.clearContents();
    pasteboard.setString(text);
}

} // namespace brenvale
