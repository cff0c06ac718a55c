// The cross-section file: save and load of the definition dialog's section.
#include "CFMView.h"
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QXmlStreamReader>

namespace {

using PP = CKwPhysicalProperty;
constexpr qint64 kMaxFileBytes = 1 << 20;

// A section file is small and plain: anything with a document type declaration (and so
// entities, internal or external) is refused before the DOM sees it.
bool isPlainDocument(const QByteArray& bytes)
{
    if (bytes.size() > kMaxFileBytes)
        return false;
    QXmlStreamReader r(bytes);
    while (!r.atEnd()) {
        r.readNext();
        if (r.tokenType() == QXmlStreamReader::DTD ||
            r.tokenType() == QXmlStreamReader::EntityReference)
            return false;
    }
    return !r.hasError();
}

// "Text (*.a)|*.a|..." to Qt's "Text (*.a);;...".
QString qtFilter(const QString& filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2)
        out << parts[i];
    return out.join(QStringLiteral(";;"));
}

} // namespace

QString CKwDefineCrossSectionDlg::FileFilter()
{
    return QStringLiteral("XML Files (*.xml)|*.xml|%1 (*.*)|*.*||")
        .arg(KwPropText("General", "AllFiles", "All Files"));
}

void CKwDefineCrossSectionDlg::AppendChildWithAttribute(QDomDocument& doc, QDomElement& parent,
                                                        const QString& elementName,
                                                        const QString& attributeName,
                                                        const QString& value)
{
    QDomElement e = doc.createElement(elementName);
    e.setAttribute(attributeName, value);
    parent.appendChild(e);
}

QByteArray CKwDefineCrossSectionDlg::SaveToBytes() const
{
    QDomDocument doc;
    doc.appendChild(doc.createProcessingInstruction(QStringLiteral("xml"),
                                                    QStringLiteral(" version='1.0' encoding='UTF-8'")));
    QDomElement root = doc.createElement(QStringLiteral("KwiWorks"));
    doc.appendChild(root);
    QDomElement prop = doc.createElement(QStringLiteral("Property"));
    prop.setAttribute(QStringLiteral("Name"), m_pClone->GetName());
    root.appendChild(prop);
    QString shape;
    m_pClone->GetSectionName(shape);
    AppendChildWithAttribute(doc, prop, QStringLiteral("Section"), QStringLiteral("Shape"), shape);
    for (int end = 1; end >= 0; --end)
        for (int i = 0; i < 6; ++i) {
            QLineEdit* e = m_dims[end][i];
            if (!e->isEnabled())
                continue;
            AppendChildWithAttribute(doc, prop, QString::fromLatin1(end ? "EndA" : "EndB"),
                                     QStringLiteral("DIM%1").arg(i + 1), e->text());
        }
    return doc.toByteArray(1);
}

bool CKwDefineCrossSectionDlg::SaveToFile(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = SaveToBytes();
    return f.write(bytes) == bytes.size();
}

bool CKwDefineCrossSectionDlg::LoadFromFile(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly) || f.size() > kMaxFileBytes)
        return false;
    return LoadFromBytes(f.read(kMaxFileBytes + 1));
}

bool CKwDefineCrossSectionDlg::LoadFromBytes(const QByteArray& bytes)
{
    if (!isPlainDocument(bytes))
        return false;
    QDomDocument doc;
    if (!doc.setContent(bytes))
        return false;
    const QDomNodeList props = doc.elementsByTagName(QStringLiteral("Property"));
    if (props.isEmpty())
        return false;
    PP* p = m_pClone;
    const QString lMessage = KwErrText("PhysicalProperties", "LSectionNotSupported",
                                       "L section not supported for bar elements");
    bool endB = false;
    auto apply = [&](const QDomElement& e) {
        const QDomNamedNodeMap attrs = e.attributes();
        for (int k = 0; k < attrs.count(); ++k) {
            const QDomAttr a = attrs.item(k).toAttr();
            const QString name = a.name();
            if (name == QLatin1String("Shape")) {
                const int code = p->GetSectionTypeFromName(a.value());
                if (code == PP::L && p->m_elementKind == PP::KindBar)
                    KwMessageBoxW(this, lMessage, windowTitle(), KwMB::OK | KwMB::ICONERROR);
                else
                    p->m_sectionShape = code;
                continue;
            }
            const bool isA = e.tagName() == QLatin1String("EndA");
            const bool isB = e.tagName() == QLatin1String("EndB");
            if ((!isA && !isB) || name.size() != 4 || !name.startsWith(QLatin1String("DIM")))
                continue;
            const int i = name.at(3).digitValue() - 1;
            if (i < 0 || i > 5)
                continue;
            const double v = units()->ToInternalValue(KwAtof(a.value()), KwUnitKind::Length);
            p->GetDimensions(isA ? 1 : 0)[i] = v;
            endB = endB || isB;
        }
    };
    for (int n = 0; n < props.count(); ++n) {
        const QDomElement prop = props.at(n).toElement();
        apply(prop);
        for (QDomElement c = prop.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
            apply(c);
    }
    if (endB && p->m_elementKind == PP::KindBeam && p->m_sectionMode != 2)
        p->m_tapered = 1;

    // Refresh.
    if (p->m_elementKind == PP::KindPipe) {
        m_shape->setCurrentIndex(0);
    } else {
        m_shape->setCurrentIndex(p->m_sectionShape >= 0 && p->m_sectionShape < m_shape->count()
                                     ? p->m_sectionShape
                                     : -1);
        if (p->m_sectionShape == PP::L && p->m_elementKind == PP::KindBar)
            KwMessageBoxW(this,
                          KwErrText("PhysicalProperties", "LSectionNotSupported",
                                    "L section not supported for Bar elements"),
                          windowTitle(), KwMB::OK | KwMB::ICONERROR);
    }
    if (p->m_tapered)
        m_tapered->setChecked(true);
    UpdateDimensionControls();
    UpdateCrossSectionBitmap();
    repaintSection();
    return true;
}

void CKwDefineCrossSectionDlg::OnBnClickedSave()
{
    const QString path = m_chooser ? m_chooser(true)
                                   : QFileDialog::getSaveFileName(this, QString(), QString(),
                                                                  qtFilter(FileFilter()));
    if (path.isEmpty())
        return;
    QString p = path;
    if (QFileInfo(p).suffix().isEmpty())
        p += QStringLiteral(".xml");
    SaveToFile(p);
}

void CKwDefineCrossSectionDlg::OnBnClickedLoad()
{
    const QString path = m_chooser ? m_chooser(false)
                                   : QFileDialog::getOpenFileName(this, QString(), QString(),
                                                                  qtFilter(FileFilter()));
    if (path.isEmpty())
        return;
    LoadFromFile(path);
}
