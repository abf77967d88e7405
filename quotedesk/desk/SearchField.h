#pragma once

#include <QLineEdit>

namespace QuoteDesk
{

class TextLabel;

/// A field for words to search: a magnifier, a hint that names what is searched, and inside at the end the
/// key that leads to the field or, while there are words, the number of hits. Escape empties the field; a
/// second Escape leaves it.
class SearchField : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchField(QWidget *parent = nullptr);
    ~SearchField() override;

    /// Shows the key that leads here while the field is empty; none when blank.
    void setKeyHint(const QKeySequence &key);
    /// Shows the number of hits while there are words.
    void setHits(const QString &hits);

Q_SIGNALS:
    /// A key leads from the field into the results: Down, Page Down, or Escape in an empty field.
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void showNote();

    TextLabel *m_note;
    QString m_keyHint;
    QString m_hits;
};

} // namespace QuoteDesk
