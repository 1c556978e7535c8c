#pragma once

#include <QHash>
#include <QQuickImageProvider>

namespace brenvale {

/// Draws icons of the desktop's theme, Breeze where it lacks one, in one colour. An image's id is
/// "name/decoration/colour" and whatever follows; the decoration is "circle", "slash" or empty. The id
/// "application" is the program's own icon as it is, "gradient/colour/colour" a circle from the one to the
/// other, from the top left to the bottom right.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    SymbolImageProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    [[nodiscard]] QString fileOf(const QString& name, int side);

    QString theme_;
    QString hand_; ///< the theme that draws for `theme_`; empty where that is not known yet
    QHash<std::pair<QString, int>, QString> files_; ///< of `theme_`, by name and size
};

} // namespace brenvale
