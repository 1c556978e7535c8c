#pragma once

#include <QString>

namespace brenvale {

/// While it lives, a window that activates itself does so with `token`: the right to take the focus, which
/// another program got from the user's click and handed on (XDG activation protocol). The toolkit looks for
/// it in the environment. On main.
class ActivationToken {
public:
    explicit ActivationToken(const QString& token) {
        if (!token.isEmpty()) {
            qputenv(variable, token.toUtf8());
        }
    }
    ~ActivationToken() { qunsetenv(variable); } // it holds once
    ActivationToken(const ActivationToken&) = delete;
    ActivationToken& operator=(const ActivationToken&) = delete;

private:
    static constexpr auto variable = "XDG_ACTIVATION_TOKEN";
};

} // namespace brenvale
