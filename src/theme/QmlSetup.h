#pragma once

class QQmlEngine;

namespace brenvale {

/// Chooses how Qt Quick draws in this process. Call before the first window or render control of it is made.
/// On main.
void chooseQuickRenderer();

/// The only way of drawing that does so into memory. As above, but any number of times.
void useSoftwareRenderer();

/// Lets the engine find the views, their types and their symbols. On main.
void setUpEngine(QQmlEngine& engine);

} // namespace brenvale
