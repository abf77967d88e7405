#pragma once

#include <QPushButton>
#include <QWidget>

#include <array>

class QToolButton;

namespace QuoteDesk
{

class GlyphLabel;
class TextLabel;

/// What stands in place of the quotes while there are neither quotes nor clients: two ways to begin, the
/// steps to a finished quote, and how to reach a database that the office shares. Nothing of it is modal.
class FirstStart : public QWidget
{
    Q_OBJECT
public:
    explicit FirstStart(QWidget *parent = nullptr);
    ~FirstStart() override;

    /// Sets how many funds the catalogue has now.
    void setFundCount(int count);

    QPushButton *btnImport; ///< Enter presses it from anywhere on the page
    QPushButton *btnTry;
    QPushButton *btnOffice; ///< shows and hides the explanation

Q_SIGNALS:
    void importWanted(); ///< an own catalogue shall be imported
    void tryWanted();    ///< a first quote shall begin with the catalogue that is there

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    static constexpr int StepCount = 3;

    QWidget *makeStart(const QString &glyph, TextLabel *&heading, TextLabel *&text, QPushButton *button,
                       QWidget *beside);
    QWidget *makeSteps();
    void showTexts();

    int m_fundCount = 0;
    TextLabel *m_title;
    TextLabel *m_question;
    TextLabel *m_importHeading = nullptr;
    TextLabel *m_importText = nullptr;
    TextLabel *m_importKey;
    TextLabel *m_tryHeading = nullptr;
    TextLabel *m_tryText = nullptr;
    std::array<TextLabel *, StepCount> m_steps{};
    TextLabel *m_officeText;
    QWidget *m_content;
};

} // namespace QuoteDesk
