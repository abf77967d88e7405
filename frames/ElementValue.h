#pragma once

#include "export/zel_commonframes_export.h"

#include <QObject>
#include <QVariant>
#include <QWidget>

#include <optional>

namespace Zel
{
/// What a labelled element has beside its components: its value, whether the user edited it, and its caption.
/// The value is a text in edits, masked edits and picture fields, a number in numeric fields, and the text of
/// the chosen line in drop-down lists.
///
/// It also sees to it that a caption too long for its place gets room: the value editor moves aside.
class ZEL_COMMONFRAMES_EXPORT ElementValue : public QObject
{
    Q_OBJECT
public:
    /// @p frame is the element and owns it. Raises Exception before Initialize and after Finalize.
    explicit ElementValue(QWidget *frame);
    ~ElementValue() override;

    /// Names the two components, once. The caption is a label or a button; the editor an edit or a combo box.
    void Attach(QWidget *caption, QWidget *editor);
    /// Takes the present places of the components for the designed ones, after a page changed them. With
    /// @p grows the editor is anchored to all four sides of the frame from here on.
    void AdoptDesign(bool grows);

    /// The last value that was right; an invalid variant when a list has no chosen line.
    QVariant Get_Value() const;
    /// Shows @p value and forgets that the user edited it. Nothing is signalled. Raises EConvertError, and
    /// changes nothing, when the editor cannot take it; a list takes an invalid variant as "none".
    void Set_Value(const QVariant &value);

    /// Whether the user has edited the value since it was last told or MarkUnedited was called. What is
    /// written straight to the component is no edit.
    bool IsEdited() const { return m_edited; }
    void MarkUnedited(); ///< From here on edits count anew.

    QString Get_Caption() const; ///< The text of the caption component.
    /// The editor moves aside when it needs the room, and is named by it for who cannot see it, unless the
    /// page has named the editor.
    void Set_Caption(const QString &caption);

Q_SIGNALS:
    /// The user changed the entry; it may still be unfinished or wrong.
    void Edited();
    /// The user finished an edit: left the editor, pressed Enter or chose a line, and the entry is right.
    void Committed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void userEdited();
    void userFinished();
    void arrange();
    void nameEditor();

    QWidget *m_frame;
    QWidget *m_caption = nullptr;
    QWidget *m_editor = nullptr;
    QRect m_captionPlace;
    QRect m_editorPlace;
    QSize m_frameSize;
    int m_frameMinimum = 0;
    bool m_grows = false;
    bool m_edited = false;
    bool m_uncommitted = false;
    std::optional<int> m_choiceBefore; // the line chosen when the user turned to the list
};
} // namespace Zel
