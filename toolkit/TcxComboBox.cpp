#include "toolkit/TcxComboBox.h"

#include "toolkit/Choices_p.h"

#include <QPointer>

TcxComboBox::TcxComboBox(QWidget *parent) : QComboBox(parent)
{
    // Measuring every line to find the widest takes longer than filling a long list.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setInsertPolicy(QComboBox::NoInsert);
    setStyleSheet(Zel::OpensAsList());
    setMaxVisibleItems(16);
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

void TcxComboBox::showPopup()
{
    Zel::PrepareDropDown(*this, count(), [this](int index) { return itemText(index); });
    QComboBox::showPopup();
}

void TcxComboBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    Zel::ElideChoice(*this, *option);
}

bool TcxComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        QStyleOptionComboBox shown;
        initStyleOption(&shown);
        if (Zel::ShowsWholeChoice(*this, *event, shown))
            return true;
    }
    return QComboBox::event(event);
}
