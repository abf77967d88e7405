# Qt 5's texts-by-reference became views in Qt 6; everything else that changed between them and matters to this
# module is below.
s/QXmlStreamStringRef(QStringRef(&sym\.text, sym\.start, len))/sym.text.mid(sym.start, len)/
s/QXmlStreamStringRef(QStringRef(&value, 0, value\.length()))/value/
s/QXmlStreamStringRef(name)/name.toString()/
s/QXmlStreamStringRef/QString/
s/QStringRef ref(&name, 1, name\.length() - 1)/QStringView ref = QStringView(name).mid(1)/
s/QStringRef(&key, 0, key\.length())/key/
s/QStringRef(&sym\.text, sym\.start, sym\.len)/QStringView(sym.text).mid(sym.start, sym.len)/
s/QStringRef(&\([a-z]*\))/QStringView(\1)/
s/QStringRef str(&instr)/QStringView str(instr)/
s/QStringRef/QStringView/g
s/QStringView(\([a-zA-Z.]*\)\.string(), [a-zA-Z.]*\.position(), \([0-9]*\))/\1.left(\2)/
s/QStringView(\([a-zA-Z.]*\)\.string(), [a-zA-Z.]*\.position() + \([a-z0-9]*\), \([a-z0-9]*\))/\1.mid(\2, \3)/
s/QStringView \([a-zA-Z]*\)(\([a-zA-Z.]*\)\.string(), [a-zA-Z.]*\.position() + \([0-9]*\), [^)]*() - [0-9]*)/QStringView \1 = \2.mid(\3)/
s/str\.string()->constData() + str\.position()/str.constData()/
s/colorStrTr\.unicode()/colorStrTr.data()/
s/(uncStr\.isEmpty()) ? 0 : uncStr\.at(0)/uncStr.isEmpty() ? QChar() : uncStr.at(0)/
s/unicode = 0;/unicode = QChar();/
s/\*const_cast<QChar \*>(end) = 0;/*const_cast<QChar *>(end) = QChar();/
s/font\.setWeight(SVGToQtWeight(states\.fontWeight))/font.setWeight(QFont::Weight(states.fontWeight))/
s/QString attribute(NodePtr node, const QString &name) const override/QString attributeValue(NodePtr node, const QCss::AttributeSelector \&selector) const override/
s/(name == QLatin1String("id") ||/(selector.name == QLatin1String("id") ||/
s/^\( *\)name == QLatin1String("xml:id"))))/\1selector.name == QLatin1String("xml:id"))))/
s/xmlClass()\.isEmpty() && name == /xmlClass().isEmpty() \&\& selector.name == /
/^#include <QtGui\/qmatrix.h>/d
/QMatrix matrixForElement/d
/^QMatrix QSvgRenderer::matrixForElement/,/^}/d
s|<QtSvg/qtsvgglobal.h>|"qtsvgglobal.h"|
# A text that is not there had a character behind it in Qt 5; a view of none has no address.
/^static qreal toDouble(const QChar \*&str)$/{
n
a\    if (!str)\
        return 0;
}
