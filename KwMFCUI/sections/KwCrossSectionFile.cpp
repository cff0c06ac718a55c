// The cross-section file: save and load of the definition dialog's section.
#include "CFMView.h"
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwBoundedXml.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <vector>

namespace {

using PP = CKwPhysicalProperty;
constexpr qint64 kMaxFileBytes = 1 << 20;

// What a section file says, in the order the load applies it: for each Property (in document
// order) its own attributes and then those of its child elements.
struct SectionEntry
{
    QString element, attribute, value;
};
using SectionGroup = std::vector<SectionEntry>;

// Reads the whole document before anything is applied, so that a file that is not
// well-formed, or breaks the bounds of the reader, changes nothing.
bool readSectionFile(const QByteArray& bytes, std::vector<SectionGroup>* groups)
{
    KwBoundedXmlReader bounded(bytes, kMaxFileBytes);
    QXmlStreamReader& r = bounded.stream();
    r.setNamespaceProcessing(false); // names are compared as written, prefix and all
    std::vector<int> open; // per open element: its group when it is a Property, else -1
    while (!r.atEnd()) {
        const QXmlStreamReader::TokenType t = r.readNext();
        if (t == QXmlStreamReader::StartElement) {
            const QString tag = r.qualifiedName().toString();
            auto add = [&](int g) {
                for (const QXmlStreamAttribute& a : r.attributes())
                    (*groups)[g].push_back(
                        {tag, a.qualifiedName().toString(), a.value().toString()});
            };
            if (!open.empty() && open.back() >= 0)
                add(open.back());
            int own = -1;
            if (tag == QLatin1String("Property")) {
                own = static_cast<int>(groups->size());
                groups->emplace_back();
                add(own);
            }
            open.push_back(own);
        } else if (t == QXmlStreamReader::EndElement) {
            if (!open.empty())
                open.pop_back();
        }
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
    // Written beside and renamed over the old file: a failed save leaves that file as it was.
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = SaveToBytes();
    return f.write(bytes) == bytes.size() && f.commit();
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
    std::vector<SectionGroup> groups;
    if (!readSectionFile(bytes, &groups) || groups.empty())
        return false;
    PP* p = m_pClone;
    const QString lMessage = KwErrText("PhysicalProperties", "LSectionNotSupported",
                                       "L section not supported for bar elements");
    bool endB = false;
    for (const SectionGroup& group : groups)
        for (const SectionEntry& e : group) {
            const QString& name = e.attribute;
            if (name == QLatin1String("Shape")) {
                const int code = p->GetSectionTypeFromName(e.value);
                if (code == PP::L && p->m_elementKind == PP::KindBar)
                    KwMessageBoxW(this, lMessage, windowTitle(), KwMB::OK | KwMB::ICONERROR);
                else
                    p->m_sectionShape = code;
                continue;
            }
            const bool isA = e.element == QLatin1String("EndA");
            const bool isB = e.element == QLatin1String("EndB");
            if ((!isA && !isB) || name.size() != 4 || !name.startsWith(QLatin1String("DIM")))
                continue;
            const int i = name.at(3).digitValue() - 1;
            if (i < 0 || i > 5)
                continue;
            const double v = units()->ToInternalValue(KwAtof(e.value), KwUnitKind::Length);
            p->GetDimensions(isA ? 1 : 0)[i] = v;
            endB = endB || isB;
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
    if (!SaveToFile(p))
        KwMessageBoxW(this,
                      KwErrText("PhysicalProperties", "SectionNotSaved",
                                "The section could not be saved to %1.")
                          .arg(QDir::toNativeSeparators(p)),
                      windowTitle(), KwMB::OK | KwMB::ICONERROR);
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
