#pragma once

class QString;

namespace brenvale {

class Pasteboard;

/// Makes `text` the contents of the clipboard. On main.
void copyText(Pasteboard& pasteboard, const QString& text);

} // namespace brenvale
