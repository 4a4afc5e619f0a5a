#pragma once

#include <functional>

// Restarts the program, the only way it changes store: no service ever sees its store change
// under it.
class AppRelauncher {
public:
    virtual ~AppRelauncher() = default;
    virtual void relaunch() = 0;
};

// Starts a fresh copy of the program's own executable and asks this one to quit.
class SystemAppRelauncher : public AppRelauncher {
public:
    // beforeStart runs first; it releases what the new process must be able to take, such as the
    // lock on the store.
    explicit SystemAppRelauncher(std::function<void()> beforeStart = {});

    void relaunch() override;

private:
    std::function<void()> m_beforeStart;
};
