#include "theme/QmlSetup.h"

#include "theme/SymbolImageProvider.h"

#include <QQmlEngine>
#include <QQuickWindow>

/// Registers the types of the QML module; the linker keeps them because of the reference below.
void qml_register_types_Brenvale(); // NOLINT: made by the QML compiler

namespace brenvale {

void chooseQuickRenderer() {
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        // Flat colours and text need no graphics card, and its drivers take more memory than all of the
        // window.
        useSoftwareRenderer();
    }
}

void useSoftwareRenderer() {
    const auto software = QStringLiteral("software");
    if (QQuickWindow::sceneGraphBackend() != software) { // once it draws, Qt warns of every wish
        QQuickWindow::setSceneGraphBackend(software);
    }
}

void setUpEngine(QQmlEngine& engine) {
    volatile auto typesOfModule = &qml_register_types_Brenvale;
    Q_UNUSED(typesOfModule);
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImageProvider);
}

} // namespace brenvale
