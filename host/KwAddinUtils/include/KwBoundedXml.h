#pragma once
// Reading XML that comes from outside the program (section files, material files, language
// files) with fixed bounds. Before the stream reader sees a byte, one linear pass over the
// document refuses what no real file of ours holds: more than MaxDepth nested elements, more
// than MaxAttributes attributes on one element, a document type declaration (and with it every
// entity but the predefined ones), or more than the caller's byte limit. A refused document
// reaches the stream reader as an error at its first token, so readers written against
// QXmlStreamReader keep their loops and only report one more kind of error.
#include "KwAddinUtilsExport.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <memory>

class KWADDINUTILS_EXPORT KwBoundedXmlReader
{
public:
    // Our deepest real file nests 6 elements and our widest element has under 10 attributes.
    static constexpr int MaxDepth = 32;
    static constexpr int MaxAttributes = 64;
    static constexpr qint64 DefaultMaxBytes = qint64(1) << 20;

    enum Refusal { NotRefused, TooLarge, DocumentType, TooDeep, TooManyAttributes };

    explicit KwBoundedXmlReader(const QByteArray& data, qint64 maxBytes = DefaultMaxBytes);
    ~KwBoundedXmlReader();
    KwBoundedXmlReader(const KwBoundedXmlReader&) = delete;
    KwBoundedXmlReader& operator=(const KwBoundedXmlReader&) = delete;

    // The stream to read; for a refused document it is at its end with an error.
    QXmlStreamReader& stream() { return *m_xml; }
    Refusal refusal() const { return m_refusal; }
    // Why the document was refused or could not be read (English); empty when neither.
    QString errorString() const;

    // The linear check alone: which bound `data` breaks, if any.
    static Refusal Check(const QByteArray& data, qint64 maxBytes = DefaultMaxBytes);
    static QString RefusalText(Refusal r);

private:
    Refusal m_refusal = NotRefused;
    std::unique_ptr<QXmlStreamReader> m_xml;
};
