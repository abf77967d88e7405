#pragma once

#include "export/zel_toolkit_export.h"

#include <QComboBox>

/// A drop-down list whose lines carry objects. Typing only picks from the list, and a choice counts at once.
/// The list opens as a scrolling list, wide enough for long texts.
/// The objects are not owned; a line whose object has been destroyed has none.
class ZEL_TOOLKIT_EXPORT TcxComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit TcxComboBox(QWidget *parent = nullptr);
    ~TcxComboBox() override;

    /// Appends a line. The choice stays as it is: a first line is not chosen by itself.
    void AddItemObject(const QString &text, QObject *object);
    /// The object of the line at @p index; nil without one or outside the list.
    QObject *ItemObject(int index) const;
    /// The object of the chosen line; nil when no line is chosen.
    QObject *SelectedObject() const { return ItemObject(currentIndex()); }
    /// The first line with that object; -1 for nil or when no line has it.
    int IndexOfObject(const QObject *object) const;
    void showPopup() override;

protected:
    /// The chosen text with "..." for what the box has no room for,
    void initStyleOption(QStyleOptionComboBox *option) const override;
    bool event(QEvent *event) override; ///< and whole under the mouse then.
};
