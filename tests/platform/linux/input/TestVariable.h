#pragma once

#include <QByteArray>

namespace brenvale {

/// A variable of the environment that is another one while this lives. No thread that reads the environment
/// may run at either end.
class TestVariable {
public:
    TestVariable(const char* name, const QByteArray& value)
        : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name)) {
        qputenv(name, value);
    }
    ~TestVariable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
    TestVariable(const TestVariable&) = delete;
    TestVariable& operator=(const TestVariable&) = delete;

private:
    const char* name_;
    bool wasSet_;
    QByteArray before_;
};

} // namespace brenvale
