#include "KwBoundedXml.h"

#include <QStringConverter>

namespace {

using R = KwBoundedXmlReader;

// One pass over the markup of a document held as `n` units of `at(i)` (bytes or UTF-16). Text,
// comments, CDATA and processing instructions are skipped; in a start tag every '=' outside a
// quoted value starts an attribute. On the well-formed part of a document this counts exactly
// what the stream reader will see; past the first malformation the reader stops with an error
// anyway, so counting too much there only refuses what would fail.
template <typename At>
R::Refusal scan(qsizetype n, At at)
{
    auto startsWith = [&](qsizetype i, const char* s) {
        for (; *s; ++s, ++i)
            if (i >= n || at(i) != char16_t(static_cast<unsigned char>(*s)))
                return false;
        return true;
    };
    // Index just past the first occurrence of `s` at or after i, or n.
    auto skipPast = [&](qsizetype i, const char* s) {
        for (; i < n; ++i)
            if (startsWith(i, s))
                return i + qsizetype(qstrlen(s));
        return n;
    };
    int depth = 0;
    qsizetype i = 0;
    while (i < n) {
        if (at(i) != u'<') {
            ++i;
            continue;
        }
        if (startsWith(i, "<!--")) {
            i = skipPast(i + 4, "-->");
        } else if (startsWith(i, "<![CDATA[")) {
            i = skipPast(i + 9, "]]>");
        } else if (startsWith(i, "<?")) {
            i = skipPast(i + 2, "?>");
        } else if (startsWith(i, "<!")) {
            return R::DocumentType;
        } else if (startsWith(i, "</")) {
            depth = depth > 0 ? depth - 1 : 0;
            i = skipPast(i + 2, ">");
        } else {
            int attributes = 0;
            char16_t quote = 0;
            char16_t last = 0;
            for (++i; i < n; ++i) {
                const char16_t c = at(i);
                if (quote) {
                    if (c == quote)
                        quote = 0;
                } else if (c == u'"' || c == u'\'') {
                    quote = c;
                } else if (c == u'=') {
                    if (++attributes > R::MaxAttributes)
                        return R::TooManyAttributes;
                } else if (c == u'>' || c == u'<') {
                    break;
                }
                last = c;
            }
            if (!(i < n && at(i) == u'>' && last == u'/') && ++depth > R::MaxDepth)
                return R::TooDeep;
            if (i < n && at(i) == u'>')
                ++i;
        }
    }
    return R::NotRefused;
}

// Documents in UTF-16 or UTF-32 are checked (and read) as text; every other encoding the
// reader knows keeps the markup characters as single ASCII bytes.
bool isWide(const QByteArray& data)
{
    // A byte order mark, or (without one) the document's first '<' in two or four bytes.
    const auto e = QStringConverter::encodingForData(data, u'<');
    return e && *e != QStringConverter::Utf8 && *e != QStringConverter::Latin1 &&
           *e != QStringConverter::System;
}

QString wideText(const QByteArray& data)
{
    QStringDecoder d(*QStringConverter::encodingForData(data, u'<'));
    return d.decode(data);
}

R::Refusal checkText(const QString& text)
{
    return scan(text.size(), [&](qsizetype i) { return char16_t(text.at(i).unicode()); });
}

} // namespace

KwBoundedXmlReader::KwBoundedXmlReader(const QByteArray& data, qint64 maxBytes)
{
    // The reader is given the whole document at once, so that it knows where it ends.
    if (data.size() > maxBytes) {
        m_refusal = TooLarge;
    } else if (isWide(data)) {
        const QString text = wideText(data);
        m_refusal = checkText(text);
        if (m_refusal == NotRefused)
            m_xml = std::make_unique<QXmlStreamReader>(text);
    } else {
        m_refusal = scan(data.size(), [&](qsizetype i) {
            return char16_t(static_cast<unsigned char>(data.at(i)));
        });
        if (m_refusal == NotRefused)
            m_xml = std::make_unique<QXmlStreamReader>(data);
    }
    if (!m_xml) {
        m_xml = std::make_unique<QXmlStreamReader>();
        m_xml->raiseError(RefusalText(m_refusal));
    }
}

KwBoundedXmlReader::~KwBoundedXmlReader() = default;

KwBoundedXmlReader::Refusal KwBoundedXmlReader::Check(const QByteArray& data, qint64 maxBytes)
{
    if (data.size() > maxBytes)
        return TooLarge;
    if (isWide(data))
        return checkText(wideText(data));
    return scan(data.size(), [&](qsizetype i) {
        return char16_t(static_cast<unsigned char>(data.at(i)));
    });
}

QString KwBoundedXmlReader::RefusalText(Refusal r)
{
    switch (r) {
    case NotRefused: return QString();
    case TooLarge: return QStringLiteral("the file is too large");
    case DocumentType: return QStringLiteral("document type declarations are not accepted");
    case TooDeep:
        return QStringLiteral("elements are nested more than %1 deep").arg(MaxDepth);
    case TooManyAttributes:
        return QStringLiteral("an element has more than %1 attributes").arg(MaxAttributes);
    }
    return QString();
}

QString KwBoundedXmlReader::errorString() const
{
    if (m_refusal != NotRefused)
        return RefusalText(m_refusal);
    return m_xml->hasError() ? m_xml->errorString() : QString();
}
