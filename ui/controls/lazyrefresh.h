#pragma once

#include <QObject>

#include <functional>

class QWidget;

// Runs a screen's refresh at once while the screen is on show, and otherwise when it is next
// shown: a hidden screen doesn't rebuild for every change made elsewhere.
class LazyRefresh : public QObject {
    Q_OBJECT

public:
    LazyRefresh(QWidget* screen, std::function<void()> refresh);

    // Something the screen shows has changed.
    void request();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_screen;
    std::function<void()> m_refresh;
    bool m_isStale = false;
};
