#pragma once

#include "records/category.h"

#include <QDialog>

#include <functional>

class ErrorLabel;
class ProductsViewModel;
class QComboBox;
class QLineEdit;
class QPushButton;

// "New Category" over the product form: a name and a tile colour. A refusal keeps the sheet open
// with the reason.
class NewCategorySheet : public QDialog {
    Q_OBJECT

public:
    using OnCreate = std::function<void(const Ref<Category>&)>;

    // The tile colours offered, grey first as on a new category.
    struct Swatch {
        const char* name;
        const char* hex;
    };
    static const std::vector<Swatch>& swatches();

    NewCategorySheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent = nullptr);

    QLineEdit* nameField() const { return m_name; }
    QComboBox* colorPicker() const { return m_color; }
    QPushButton* createButton() const { return m_create; }
    ErrorLabel* errorLabel() const { return m_error; }

private:
    void create();

    ProductsViewModel& m_model;
    OnCreate m_onCreate;
    QLineEdit* m_name;
    QComboBox* m_color;
    ErrorLabel* m_error;
    QPushButton* m_create;
};
