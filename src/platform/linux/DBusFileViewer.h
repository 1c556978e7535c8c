#pragma once

#include "platform/FileViewer.h"

namespace brenvale {

/// The file manager that serves org.freedesktop.FileManager1; where none does, the desktop's program for
/// folders opens the folder alone.
class DBusFileViewer final : public FileViewer {
public:
    void activateFileViewerSelecting(const QUrl& file) override;
};

} // namespace brenvale
