#pragma once

#include "stock/productsviewmodel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/sheet.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include <functional>

// A sheet over the product form that makes a record from a name, for the form to take up at once.
// A refusal keeps the sheet open with the reason, the name ready to correct.
template <class Record> class NewRecordSheet : public Sheet {
public:
    using OnCreate = std::function<void(const Ref<Record>&)>;

    QLineEdit* nameField() const { return m_name; }
    QPushButton* createButton() const { return primaryButton(); }

protected:
    NewRecordSheet(const QString& title, const QString& createTitle, const QString& nameTitle,
                   ProductsViewModel& model, OnCreate onCreate, QWidget* parent)
        : Sheet(createTitle, parent)
        , m_model(model)
        , m_onCreate(std::move(onCreate))
        , m_name(new QLineEdit(this))
    {
        setTitle(title);
        setFixedWidth(400);
        addLabelledField(form(), nameTitle, m_name);
        m_name->setFocus();
    }

    ProductsViewModel& model() const { return m_model; }
    virtual Creation<Record> create() = 0;

private:
    void primaryAction() override
    {
        const Creation<Record> made = create();
        showError(made.errorMessage);
        if (!made.record) {
            m_name->setFocus();
            return;
        }
        m_onCreate(made.record);
        accept();
    }

    ProductsViewModel& m_model;
    OnCreate m_onCreate;
    QLineEdit* m_name;
};
