// The bounds of every XML reader: nesting, attributes, document types, size.
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwBoundedXml.h"
#include "KwMaterialDatabase.h"
#include "KwTestSupport.h"

#include <QStringEncoder>
#include <gtest/gtest.h>

#include <functional>

namespace {

using B = KwBoundedXmlReader;

QByteArray nested(int depth, const QByteArray& open = "<a>", const QByteArray& close = "</a>")
{
    return open.repeated(depth) + close.repeated(depth);
}

QByteArray withAttributes(int count, const QByteArray& name = "a")
{
    QByteArray e = "<" + name;
    for (int i = 0; i < count; ++i)
        e += " x" + QByteArray::number(i) + "=\"v\"";
    return e + "/>";
}

} // namespace

TEST(BoundedXml, countsWhatTheStreamReaderWillSee)
{
    const std::pair<QByteArray, B::Refusal> cases[] = {
        {nested(B::MaxDepth), B::NotRefused},
        {nested(B::MaxDepth + 1), B::TooDeep},
        {nested(149000), B::TooDeep},
        {"<r>" + QByteArray("<a/>").repeated(5000) + "</r>", B::NotRefused}, // siblings, not depth
        {QByteArray("<r><a></a>").repeated(1) + QByteArray("<b></b>").repeated(100) + "</r>",
         B::NotRefused},
        {withAttributes(B::MaxAttributes), B::NotRefused},
        {withAttributes(B::MaxAttributes + 1), B::TooManyAttributes},
        {withAttributes(60000), B::TooManyAttributes},
        // '=' and '>' inside values, and markup in comments and CDATA, are not counted.
        {"<a v=\"" + QByteArray("=").repeated(500) + "\" w='>>>==' />", B::NotRefused},
        {"<r><!--" + nested(100) + "--><![CDATA[" + nested(100) + "]]><?pi <a><a> ?></r>",
         B::NotRefused},
        {"<r>" + withAttributes(B::MaxAttributes + 1, "b").replace("/>", ">") + "</b></r>",
         B::TooManyAttributes},
        {"<?xml version='1.0'?><!DOCTYPE r [<!ENTITY a 'x'>]><r>&a;</r>", B::DocumentType},
        {QByteArray(" ").repeated(B::DefaultMaxBytes + 1), B::TooLarge},
    };
    for (const auto& [doc, expected] : cases)
        EXPECT_EQ(B::Check(doc), expected) << doc.left(120).constData();

    // Wide encodings are checked as text, not as bytes.
    QStringEncoder toUtf16(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    const QByteArray wideDeep = toUtf16(QString::fromLatin1(nested(B::MaxDepth + 1)));
    const QByteArray wideFlat = toUtf16(QString::fromLatin1(withAttributes(B::MaxAttributes + 1)));
    const QByteArray wideOk = toUtf16(QStringLiteral("<r a='1'><b/></r>"));
    EXPECT_EQ(B::Check(wideDeep), B::TooDeep);
    // Without a byte order mark too; closing tags and empty elements are seen as such.
    QStringEncoder toUtf16BE(QStringEncoder::Utf16BE);
    const QByteArray bare = toUtf16BE(QStringLiteral("<r>") + QStringLiteral("<a/>").repeated(50) +
                                      QString::fromLatin1(nested(B::MaxDepth - 1)) +
                                      QStringLiteral("</r>"));
    EXPECT_EQ(B::Check(bare), B::NotRefused);
    EXPECT_EQ(B::Check(wideFlat), B::TooManyAttributes);
    B reader(wideOk);
    ASSERT_TRUE(reader.stream().readNextStartElement());
    EXPECT_EQ(reader.stream().attributes().value(QLatin1String("a")), QLatin1String("1"));

    // A refused document reads as an error at once; an accepted one reads as ever.
    B refused(nested(B::MaxDepth + 1));
    EXPECT_EQ(refused.refusal(), B::TooDeep);
    EXPECT_TRUE(refused.stream().atEnd());
    EXPECT_TRUE(refused.stream().hasError());
    EXPECT_FALSE(refused.errorString().isEmpty());
    B accepted(nested(3));
    int starts = 0;
    while (!accepted.stream().atEnd())
        starts += accepted.stream().readNext() == QXmlStreamReader::StartElement;
    EXPECT_EQ(starts, 3);
    EXPECT_FALSE(accepted.stream().hasError());
}

// Every reader of the project refuses the documents that froze or crashed the old ones, and
// still reads its own files. Each hostile document wraps its load in the reader's own root so
// that only the bound stops it.
TEST(BoundedXml, everyReaderRefusesDeepAndWideDocuments)
{
    kwtest::IsolateSettings();
    KW_UOM mm(KW_UOM::MMNS);
    CKwPhysicalProperty property(1, QStringLiteral("P"));
    auto* dlg = new CKwDefineCrossSectionDlg(&property, &mm, nullptr);
    dlg->Create();

    struct Reader
    {
        const char* name;
        QByteArray open, close;
        std::function<bool(const QByteArray&)> read; // true: read
    };
    namespace DB = KwMaterialDatabase;
    const Reader readers[] = {
        {"section file", "<KwiWorks><Property Name='x'><Section Shape='BAR'/>",
         "<EndA DIM1='5'/><EndA DIM2='7'/></Property></KwiWorks>",
         [&](const QByteArray& b) { return dlg->LoadFromBytes(b); }},
        {"svrmat", "<svrmat version='1'>", "<material name='m'/></svrmat>",
         [](const QByteArray& b) { return DB::ReadSvrmat(b).ok; }},
        {"kwimat", "<kwimat version='1'>", "<material name='m'/></kwimat>",
         [](const QByteArray& b) { return DB::ReadKwimat(b).ok; }},
        {"sldmat", "<materials><classification name='c'>",
         "<material name='m'><physicalproperties><EX value='2e11'/></physicalproperties>"
         "</material></classification></materials>",
         [](const QByteArray& b) { return DB::ReadSldmat(b).ok; }},
        {"material xml", "<svrmat version='1'>", "<material name='m'/></svrmat>",
         [](const QByteArray& b) { return DB::ReadXml(b).ok; }},
        {"language", "<KwLanguage code='xx'>",
         "<Texts kind='PropPage'><Section name='S'><Text key='k'>t</Text></Section></Texts>"
         "</KwLanguage>",
         [](const QByteArray& b) {
             QString code, error;
             const int n = CKwXMLUtils::ParseLanguageDocument(b, &code, &error);
             EXPECT_TRUE(n >= 0 || !error.isEmpty());
             return n >= 0;
         }},
    };
    for (const Reader& r : readers) {
        SCOPED_TRACE(r.name);
        // The reader's own small document is read (materials: as far as its grammar goes).
        const QByteArray plain = r.open + r.close;
        if (QByteArray(r.name) == "section file" || QByteArray(r.name) == "language") {
            EXPECT_TRUE(r.read(plain));
        }
        const QByteArray deep = r.open + nested(149000, "<x>", "</x>") + r.close;
        const QByteArray wide = r.open + withAttributes(60000, "x") + r.close;
        const QByteArray typed =
            "<!DOCTYPE d [<!ENTITY e 'x'>]>" + r.open + "<x a='&e;'/>" + r.close;
        for (const QByteArray& bad : {deep, wide, typed}) {
            const CKwPhysicalProperty* copy = dlg->GetWorkingCopy();
            const int shape = copy->m_sectionShape;
            const std::array<double, 6> dims = copy->m_dimA;
            EXPECT_FALSE(r.read(bad)) << bad.left(80).constData();
            EXPECT_EQ(copy->m_sectionShape, shape) << "a refused file changed the section";
            EXPECT_EQ(copy->m_dimA, dims);
        }
    }
    // Material files say why.
    EXPECT_TRUE(DB::ReadSvrmat("<svrmat>" + nested(40) + "</svrmat>")
                    .error.contains(QString::number(B::MaxDepth)));
    EXPECT_TRUE(DB::ReadSldmat("<materials>" + withAttributes(100) + "</materials>")
                    .error.contains(QString::number(B::MaxAttributes)));
    delete dlg;
}
