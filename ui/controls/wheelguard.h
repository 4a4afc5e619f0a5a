#pragma once

#include <QObject>

// Keeps the mouse wheel from changing a combo box or spin box that isn't focused: scrolling a
// form past one must not change the value under the pointer, which Save would then keep. The
// wheel goes on to whatever scrolls around it. Installed once on the application.
class WheelGuard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
