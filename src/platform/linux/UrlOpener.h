#pragma once

#include <QObject>

class QUrl;

namespace brenvale {

class ChildPrograms;

/// Opens addresses and folders in the desktop's own programs, for all of the toolkit's ways to ask for that.
/// On main.
class UrlOpener final : public QObject {
    Q_OBJECT

public:
    /// `programs` must outlive it.
    explicit UrlOpener(const ChildPrograms& programs);
    ~UrlOpener() override;

public slots:
    void openUrl(const QUrl& url);

private:
    const ChildPrograms& programs_;
};

} // namespace brenvale
