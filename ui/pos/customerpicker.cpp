#include "ui/pos/customerpicker.h"

#include "ui/controls/recordrowdelegate.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

CustomerPicker::CustomerPicker(CustomersViewModel& customers, Choose choose, QWidget* parent)
    : QFrame(parent, Qt::Popup)
    , m_customers(customers)
    , m_model(customers)
    , m_choose(std::move(choose))
    , m_search(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_clear(new QPushButton(QStringLiteral("Clear Customer"), this))
{
    setFrameShape(QFrame::StyledPanel);
    setAttribute(Qt::WA_DeleteOnClose);
    m_search->setPlaceholderText(CustomersViewModel::searchPrompt());
    m_search->setAccessibleName(CustomersViewModel::searchPrompt());
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_list->setModel(&m_model);
    m_list->setItemDelegate(new RecordRowDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setFocusPolicy(Qt::NoFocus);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_clear);
    resize(340, 420);

    m_model.restart();
    if (m_model.rowCount() > 0)
        m_list->setCurrentIndex(m_model.index(0));
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_customers.setSearchText(text);
        m_model.restart();
        if (m_model.rowCount() > 0)
            m_list->setCurrentIndex(m_model.index(0));
    });
    connect(m_list, &QListView::clicked, this,
            [this](const QModelIndex& index) { pick(m_model.customer(index.row())); });
    connect(m_search, &QLineEdit::returnPressed, this, [this] {
        const QModelIndex current = m_list->currentIndex();
        if (current.isValid())
            pick(m_model.customer(current.row()));
    });
    connect(m_clear, &QPushButton::clicked, this, [this] { pick(nullptr); });
}

CustomerPicker* CustomerPicker::popUp(CustomersViewModel& customers, Choose choose, QWidget* anchor)
{
    auto* picker = new CustomerPicker(customers, std::move(choose), anchor);
    picker->move(anchor->mapToGlobal(QPoint(0, anchor->height())));
    picker->show();
    picker->m_search->setFocus();
    return picker;
}

bool CustomerPicker::eventFilter(QObject* watched, QEvent* event)
{
    // The arrows move through the list while the typing stays in the field.
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            const int row = m_list->currentIndex().row() + (key == Qt::Key_Down ? 1 : -1);
            if (row >= 0 && row < m_model.rowCount())
                m_list->setCurrentIndex(m_model.index(row));
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void CustomerPicker::pick(const Ref<Customer>& customer)
{
    m_choose(customer);
    close();
}
