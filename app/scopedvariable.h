#pragma once

#include <QByteArray>

/// Sets a variable of the environment. The destructor restores it, so that processes that are
/// started later do not inherit it. Only while no other thread uses the environment.
class ScopedVariable
{
public:
    /// @param name must outlive the object
    ScopedVariable(const char *name, const QByteArray &value)
        : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~ScopedVariable()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    ScopedVariable(const ScopedVariable &) = delete;
    ScopedVariable &operator=(const ScopedVariable &) = delete;

private:
    const char *const m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};
