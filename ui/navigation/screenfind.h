#pragma once

#include <QObject>
#include <QPointer>

class POSActionBus;
class QLineEdit;
class QWidget;

// Lends a screen's search box to "Find Product" (Ctrl+F) while the screen is on show.
class ScreenFind : public QObject {
    Q_OBJECT

public:
    static void offer(POSActionBus& bus, QWidget* screen, QLineEdit* field);
    ~ScreenFind() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ScreenFind(POSActionBus& bus, QWidget* screen, QLineEdit* field);
    void withdraw();

    // The window's bus goes before the screens that the window deletes last.
    QPointer<POSActionBus> m_bus;
    QLineEdit* m_field;
    bool m_offered = false;
};
