#pragma once

#include <QByteArray>

namespace velmora::test {

/// Another value, or none, for an environment variable of this process.
class Environment {
public:
    Environment(const char* name, const QByteArray& value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_before(qgetenv(name)) {
        set(!value.isNull(), value);
    }
    ~Environment() { set(m_wasSet, m_before); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void set(bool isSet, const QByteArray& value) {
        if (isSet)
            qputenv(m_name, value);
        else
            qunsetenv(m_name);
    }

    const char* m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};

} // namespace velmora::test
