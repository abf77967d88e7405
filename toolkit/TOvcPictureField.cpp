#include "toolkit/TOvcPictureField.h"

TOvcPictureField::TOvcPictureField(QWidget *parent) : TOvcBaseField(parent) {}

TOvcPictureField::~TOvcPictureField() = default;

void TOvcPictureField::MaskChanged()
{
    setMaxLength(pictureMask().isEmpty() ? 32767 : static_cast<int>(pictureMask().size()));
    Recheck();
}

TOvcBaseField::Verdict TOvcPictureField::Judge(const QString &text) const
{
    const QString mask = pictureMask();
    const auto fits = [](QChar kind, QChar sign) {
        switch (kind.unicode()) {
        case 'X':
            return true;
        case '9':
            return sign.isDigit();
        case 'A':
            return sign.isLetter();
        default:
            return sign == kind;
        }
    };
    for (qsizetype i = 0; i < qMin(text.size(), mask.size()); ++i) {
        if (!fits(mask.at(i), text.at(i)))
            return {QValidator::Invalid,
                    tr("\"%1\" does not belong at place %2.").arg(text.at(i)).arg(i + 1)};
    }
    // A character outside the basic plane takes two positions and must not be cut in the middle.
    if (!text.isEmpty() && text.back().isHighSurrogate())
        return {QValidator::Invalid, tr("At most %1 characters.").arg(maxLength())};
    return {};
}
