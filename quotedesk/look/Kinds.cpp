#include "look/Kinds.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <QVariant>
#include <QWidget>

namespace QuoteDesk
{
namespace
{

constexpr const char *kindProperty = "lookButtonKind";
constexpr const char *markProperty = "lookFieldMark";
constexpr const char *smallProperty = "lookSmall";

/// Sets a property that the style reads. The change may need another size, so the widget measures itself
/// again.
void set(QWidget &widget, const char *property, const QVariant &value)
{
    if (widget.property(property) == value)
        return;
    widget.setProperty(property, value);
    QEvent changed(QEvent::StyleChange);
    QCoreApplication::sendEvent(&widget, &changed);
}

} // namespace

void setButtonKind(QAbstractButton &button, ButtonKind kind)
{
    set(button, kindProperty, static_cast<int>(kind));
}

std::optional<ButtonKind> buttonKindOf(const QWidget *button)
{
    const QVariant kind = button ? button->property(kindProperty) : QVariant();
    return kind.isValid() ? std::optional(static_cast<ButtonKind>(kind.toInt())) : std::nullopt;
}

void setFieldMark(QWidget &field, FieldMark mark)
{
    set(field, markProperty, static_cast<int>(mark));
}

FieldMark fieldMarkOf(const QWidget *field)
{
    return field ? static_cast<FieldMark>(field->property(markProperty).toInt()) : FieldMark::None;
}

void setSmall(QWidget &control, bool isSmall)
{
    set(control, smallProperty, isSmall);
}

bool isSmall(const QWidget *control)
{
    return control && control->property(smallProperty).toBool();
}

} // namespace QuoteDesk
