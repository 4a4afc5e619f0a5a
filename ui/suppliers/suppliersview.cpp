#include "ui/suppliers/suppliersview.h"

#include "environment/appenvironment.h"
#include "ui/controls/asktodelete.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/listdetail.h"
#include "ui/controls/readingorder.h"
#include "ui/controls/recordrowdelegate.h"
#include "ui/controls/recordrowmodel.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <array>

SuppliersView::SuppliersView(AppEnvironment& environment, QWidget* parent)
    : QWidget(parent)
    , m_model(environment.modelContext())
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(14);

    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Suppliers"), Theme::Text::title, this));
    header->addStretch();
    m_new = new QPushButton(SuppliersViewModel::newSupplierTitle(), this);
    Theme::markPrimary(m_new);
    header->addWidget(m_new);
    layout->addLayout(header);

    m_search = makeSearchField(SuppliersViewModel::searchPrompt(), this);
    m_search->setFixedWidth(recordListWidth);
    layout->addWidget(m_search);
    m_error = new ErrorLabel(this);
    layout->addWidget(m_error);

    m_listCard = new RecordListCard(QStringLiteral("Suppliers"), SuppliersViewModel::emptyTitle(),
                                    SuppliersViewModel::emptyMessage(), this);
    m_listCard->setFixedWidth(recordListWidth);
    m_rows = new RecordRowModel(
        SuppliersViewModel::pageSize,
        [this](const RecordListRow* after, int limit) { return m_model.page(after, limit); }, this);
    m_listCard->setModel(m_rows);
    list()->setItemDelegate(new RecordRowDelegate(list()));
    m_detail = new DetailPages(SuppliersViewModel::noSelectionTitle(),
                               SuppliersViewModel::noSelectionMessage(), this);
    m_detail->addWidget(buildForm());
    auto* body = new QHBoxLayout;
    body->setSpacing(24);
    body->addWidget(m_listCard);
    body->addWidget(m_detail, 1);
    layout->addLayout(body, 1);

    connect(m_search, &QLineEdit::textChanged, &m_model, &SuppliersViewModel::setSearchText);
    connect(&m_model, &SuppliersViewModel::searchTextChanged, this, [this] {
        if (m_search->text() != m_model.searchText())
            m_search->setText(m_model.searchText());
        refreshList(true);
    });
    connect(&m_model, &SuppliersViewModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &SuppliersViewModel::suppliersChanged, this, [this] {
        // Not while the list is in the middle of changing its current row: it is rebuilt after.
        if (m_listCard->isChoosing())
            QTimer::singleShot(0, this, [this] { refreshList(); });
        else
            refreshList();
    });
    connect(&m_model, &SuppliersViewModel::selectionChanged, this, &SuppliersView::showSelection);
    connect(m_listCard, &RecordListCard::rowChosen, this, [this](int row) {
        const QUuid chosen = m_rows->recordID(row);
        const Ref<Supplier> selected = m_model.selectedSupplier();
        if (!selected || chosen != selected->id())
            openAfterAsking([this] { showChosenRow(); },
                            [this, chosen] {
                                if (const Ref<Supplier> supplier = m_model.supplier(chosen))
                                    m_model.select(supplier);
                                else
                                    showChosenRow();
                            });
    });
    connect(m_new, &QPushButton::clicked, this, [this] {
        askToLeave([this] {
            m_model.addSupplier();
            field(Field::name)->setFocus();
            field(Field::name)->selectAll();
        });
    });
    refreshList();
}

QWidget* SuppliersView::buildForm()
{
    m_form = new ReadingOrderForm(this);
    auto* column = new QVBoxLayout(m_form);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* details = new Section(QStringLiteral("Details"), m_form);
    Card* card = details->card();
    card->setMaximumWidth(720);
    auto* grid = new QGridLayout;
    details->content()->addLayout(grid);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    grid->setColumnMinimumWidth(0, 110);
    grid->setColumnStretch(1, 1);
    const auto addRow = [grid, card](const QString& caption, QWidget* field, Qt::Alignment align) {
        const int row = grid->rowCount();
        auto* label = new QLabel(caption, card);
        label->setBuddy(field);
        field->setAccessibleName(caption);
        grid->addWidget(label, row, 0, Qt::AlignLeft | align);
        grid->addWidget(field, row, 1);
    };
    const QStringList captions{QStringLiteral("Name"), QStringLiteral("Phone"), QStringLiteral("Email")};
    for (const QString& caption : captions) {
        auto* edit = new QLineEdit(card);
        addRow(caption, edit, Qt::AlignVCenter);
        m_fields.append(edit);
    }
    for (const QString& caption : {QStringLiteral("Address"), QStringLiteral("Notes")}) {
        auto* edit = new QPlainTextEdit(card);
        edit->setTabChangesFocus(true);
        edit->setFixedHeight(72);
        addRow(caption, edit, Qt::AlignTop);
        m_notes.append(edit);
    }
    m_active = new QCheckBox(QStringLiteral("Active"), card);
    grid->addWidget(m_active, grid->rowCount(), 1);
    grid->addWidget(Theme::label(QStringLiteral("Inactive suppliers aren't offered when you pick a product's "
                                                "supplier."),
                                 Theme::Text::note, card),
                    grid->rowCount(), 1);
    column->addWidget(details);

    m_footer = new FormFooter(QStringLiteral("Delete Supplier"), m_form);
    m_footer->setMaximumWidth(720);
    m_footer->setContentsMargins(0, 4, 0, 0);
    column->addWidget(m_footer);
    column->addStretch();

    // Edits go onto the view model's copy; the list shows them once saved.
    const auto edited = [this] { m_footer->markEdited(); };
    const std::array<void (Supplier::*)(const QString&), 3> setters{&Supplier::setName, &Supplier::setPhone,
                                                                    &Supplier::setEmail};
    for (int i = 0; i < m_fields.size(); ++i) {
        const auto setter = setters[size_t(i)];
        connect(m_fields[i], &QLineEdit::textEdited, this, [this, setter, edited](const QString& text) {
            if (const Ref<Supplier> supplier = m_model.editedSupplier())
                ((*supplier).*setter)(text);
            edited();
        });
    }
    const std::array<void (Supplier::*)(const QString&), 2> noteSetters{&Supplier::setAddress,
                                                                        &Supplier::setNotes};
    for (int i = 0; i < m_notes.size(); ++i) {
        const auto setter = noteSetters[size_t(i)];
        QPlainTextEdit* edit = m_notes[i];
        connect(edit, &QPlainTextEdit::textChanged, this, [this, setter, edit, edited] {
            if (const Ref<Supplier> supplier = m_model.editedSupplier())
                ((*supplier).*setter)(edit->toPlainText());
            edited();
        });
    }
    connect(m_active, &QCheckBox::clicked, this, [this, edited](bool on) {
        if (const Ref<Supplier> supplier = m_model.editedSupplier())
            supplier->setIsActive(on);
        edited();
    });
    connect(m_footer->saveButton(), &QPushButton::clicked, this, [this] { save(); });
    connect(m_footer->deleteButton(), &QPushButton::clicked, this, &SuppliersView::confirmDelete);
    return m_form;
}

QLineEdit* SuppliersView::field(Field which) const
{
    return m_fields[static_cast<int>(which)];
}

QPlainTextEdit* SuppliersView::note(Note which) const
{
    return m_notes[static_cast<int>(which)];
}

QListView* SuppliersView::list() const
{
    return m_listCard->list();
}

void SuppliersView::refreshList(bool fromTop)
{
    if (fromTop)
        m_rows->restart();
    else
        m_rows->reload();
    showChosenRow();
}

void SuppliersView::showChosenRow()
{
    // One the search hides has no row to look for: the search would read every page.
    const Ref<Supplier> selected = m_model.selectedSupplier();
    const bool listed = selected && !m_model.filteredSuppliers({selected}).isEmpty();
    m_listCard->showChosenRow(listed ? m_rows->rowOf(selected->id()) : -1);
}

void SuppliersView::showSelection()
{
    // A new supplier has no row until it is saved.
    showChosenRow();
    m_footer->clear();
    if (!m_model.editedSupplier()) {
        m_detail->showDetail(nullptr);
        return;
    }
    showFields();
    m_detail->showDetail(m_form);
}

void SuppliersView::showFields()
{
    const Ref<Supplier> supplier = m_model.editedSupplier();
    field(Field::name)->setText(supplier->name());
    field(Field::phone)->setText(supplier->phone());
    field(Field::email)->setText(supplier->email());
    for (QPlainTextEdit* edit : m_notes)
        edit->blockSignals(true);
    note(Note::address)->setPlainText(supplier->address());
    note(Note::notes)->setPlainText(supplier->notes());
    for (QPlainTextEdit* edit : m_notes)
        edit->blockSignals(false);
    m_active->setChecked(supplier->isActive());
    m_footer->showNewRecord(m_model.isNewSupplier());
}

bool SuppliersView::save()
{
    if (!m_model.editedSupplier())
        return false;
    const std::optional<QString> failure = m_model.save();
    m_footer->showSaveResult(failure);
    if (!failure)
        showFields();
    return !failure;
}

void SuppliersView::confirmDelete()
{
    if (!m_model.editedSupplier())
        return;
    askToDelete(this, SuppliersViewModel::deleteTitle(), SuppliersViewModel::deleteMessage(),
                [this] { m_model.deleteSupplier(); });
}

QString SuppliersView::editedName() const
{
    return nameOrTitle(m_model.editedSupplier()->name(), SuppliersViewModel::newSupplierTitle());
}

QStringList SuppliersView::listedNames() const
{
    return m_rows->names();
}

void SuppliersView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        refreshList();
}
