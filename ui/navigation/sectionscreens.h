#pragma once

#include "ui/navigation/appsection.h"

#include <functional>
#include <map>

class QWidget;

// The sections whose screens exist, each with the factory that makes its screen. The sidebar
// offers a section only once its screen is registered here.
class SectionScreens {
public:
    using Factory = std::function<QWidget*()>;

    void add(AppSection section, Factory factory) { m_factories[section] = std::move(factory); }
    bool contains(AppSection section) const { return m_factories.contains(section); }
    // A new screen, owned by the caller.
    QWidget* make(AppSection section) const { return m_factories.at(section)(); }

private:
    std::map<AppSection, Factory> m_factories;
};
