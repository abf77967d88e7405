#pragma once

#include "toolkit/ChoiceBox.h"

/// A drop-down list whose lines have objects. Typing selects from the list, and a choice takes effect at
/// once. The list opens as a scrolling list, wide enough for long texts. The objects are not owned; after an
/// object is destroyed, its line has none.
class ZEL_TOOLKIT_EXPORT TcxComboBox : public Zel::ChoiceBox
{
    Q_OBJECT
public:
    explicit TcxComboBox(QWidget *parent = nullptr);
    ~TcxComboBox() override;

    /// Appends a line. Does not change the choice; a first line is not chosen automatically.
    void AddItemObject(const QString &text, QObject *object);
    /// The object of the line at @p index; nil without one or outside the list.
    QObject *ItemObject(int index) const;
    /// The object of the chosen line; nil when no line is chosen.
    QObject *SelectedObject() const { return ItemObject(currentIndex()); }
    /// The first line with that object; -1 for nil or when no line has it.
    int IndexOfObject(const QObject *object) const;
};
