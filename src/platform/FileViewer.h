#pragma once

class QUrl;

namespace brenvale {

/// The desktop's file manager. On main.
class FileViewer {
public:
    virtual ~FileViewer() = default;

    /// Opens the folder of a local file with the file selected in it. Does not wait; where there is no file
    /// manager, nothing happens.
    virtual void activateFileViewerSelecting(const QUrl& file) = 0;
};

} // namespace brenvale
