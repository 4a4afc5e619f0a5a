#include "ui/navigation/poscommands.h"

POSCommands::POSCommands(POSActionBus& bus, QWidget* parent)
    : QMenu(QStringLiteral("&Sale"), parent)
    , m_bus(bus)
{
    addCommand(QStringLiteral("New Sale"), {QKeySequence(Qt::CTRL | Qt::Key_N)}, &POSActionBus::newSale);
    addFindProduct();
    // The keypad's Enter as well as the main Return: cashiers often ring up on the keypad.
    addCommand(QStringLiteral("Complete Sale"),
               {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)},
               &POSActionBus::completeSale);
    addCommand(QStringLiteral("Hold Sale"), {QKeySequence(Qt::CTRL | Qt::Key_H)}, &POSActionBus::holdSale);
    addCommand(QStringLiteral("Recall Held Sale"), {QKeySequence(Qt::CTRL | Qt::Key_R)},
               &POSActionBus::recallSale);
    addCommand(QStringLiteral("Print Last Receipt"), {QKeySequence(Qt::CTRL | Qt::Key_P)},
               &POSActionBus::printReceipt);
}

void POSCommands::addCommand(const QString& text, const QList<QKeySequence>& shortcuts,
                             const POSActionBus::Action& (POSActionBus::*action)() const)
{
    QAction* item = addAction(text);
    item->setShortcuts(shortcuts);
    item->setEnabled(m_bus.isPOSWorkspaceActive());
    connect(&m_bus, &POSActionBus::isPOSWorkspaceActiveChanged, item, &QAction::setEnabled);
    // Read when chosen: the workspace may register its actions after the menu was built.
    connect(item, &QAction::triggered, this, [this, action] { POSActionBus::run((m_bus.*action)()); });
}

void POSCommands::addFindProduct()
{
    QAction* item = addAction(QStringLiteral("Find Product"));
    item->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
    const auto update = [this, item] {
        item->setEnabled(m_bus.isPOSWorkspaceActive() || bool(m_bus.findOnScreen()));
    };
    update();
    connect(&m_bus, &POSActionBus::isPOSWorkspaceActiveChanged, item, update);
    connect(&m_bus, &POSActionBus::findOnScreenChanged, item, update);
    connect(item, &QAction::triggered, this, [this] {
        POSActionBus::run(m_bus.isPOSWorkspaceActive() ? m_bus.findProduct() : m_bus.findOnScreen());
    });
}
