#pragma once

#include "records/supplier.h"

#include <QDialog>

#include <functional>

class ErrorLabel;
class ProductsViewModel;
class QLineEdit;
class QPushButton;

// "New Supplier" over the product form: just the name; the rest is filled in on the Suppliers
// screen. A refusal keeps the sheet open with the reason.
class NewSupplierSheet : public QDialog {
    Q_OBJECT

public:
    using OnCreate = std::function<void(const Ref<Supplier>&)>;

    NewSupplierSheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent = nullptr);

    QLineEdit* nameField() const { return m_name; }
    QPushButton* createButton() const { return m_create; }
    ErrorLabel* errorLabel() const { return m_error; }

private:
    void create();

    ProductsViewModel& m_model;
    OnCreate m_onCreate;
    QLineEdit* m_name;
    ErrorLabel* m_error;
    QPushButton* m_create;
};
