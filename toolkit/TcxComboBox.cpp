#include "toolkit/TcxComboBox.h"

#include <QPointer>

TcxComboBox::TcxComboBox(QWidget *parent) : Zel::ChoiceBox(parent)
{
    setInsertPolicy(QComboBox::NoInsert);
}

TcxComboBox::~TcxComboBox() = default;

void TcxComboBox::AddItemObject(const QString &text, QObject *object)
{
    const int chosen = currentIndex();
    addItem(text, QVariant::fromValue(QPointer<QObject>(object)));
    if (currentIndex() != chosen)
        setCurrentIndex(chosen);
}

QObject *TcxComboBox::ItemObject(int index) const
{
    return itemData(index).value<QPointer<QObject>>();
}

int TcxComboBox::IndexOfObject(const QObject *object) const
{
    for (int i = 0; object && i < count(); ++i) {
        if (ItemObject(i) == object)
            return i;
    }
    return -1;
}
