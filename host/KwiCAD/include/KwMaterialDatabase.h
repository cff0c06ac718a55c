#pragma once
// Material database files. Four kinds, told apart by the file's extension (any case):
//   .xml     a material exchange file: either of the program's own documents below, or a
//            CAD material library (read as .sldmat), recognised by its root element;
//   .svrmat  the program's own single-material file;
//   .sldmat  a CAD material library (classification / material / physicalproperties, SI);
//   .kwimat  the program's own material library (any number of materials).
// Each kind has its own reader. A reader either returns every material of the file, checked,
// or fails with a reason; it never returns part of a material. The formats are described in
// docs/materials.md.
#include "CKwMaterial.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace KwMaterialDatabase {

enum class Format { Unknown = 0, Xml, Svrmat, Sldmat, Kwimat };

struct ReadResult
{
    bool ok = false;
    QList<CKwMaterial> materials;
    QStringList warnings; // unknown keys, values without units, skipped elements
    QString error;        // why the file was refused (empty when ok)
};

// Files larger than this are refused unread.
inline constexpr qint64 MaxFileBytes = 8 * 1024 * 1024;
inline constexpr int MaxMaterials = 5000;
inline constexpr int MaxCurvePoints = 100000;

// The kind of a path by its extension, compared without regard to case in the order xml,
// svrmat, sldmat, kwimat.
KWICAD_EXPORT Format FormatOfPath(const QString& path);

KWICAD_EXPORT ReadResult ReadXml(const QByteArray& data);
KWICAD_EXPORT ReadResult ReadSvrmat(const QByteArray& data);
KWICAD_EXPORT ReadResult ReadSldmat(const QByteArray& data);
KWICAD_EXPORT ReadResult ReadKwimat(const QByteArray& data);
// Reads a file and hands it to the reader of its kind; refuses missing, unreadable, empty,
// huge and unknown-extension files.
KWICAD_EXPORT ReadResult ReadFile(const QString& path);

// The program's own documents, written in SI with units on every value.
KWICAD_EXPORT QByteArray WriteSvrmat(const CKwMaterial& material);
KWICAD_EXPORT QByteArray WriteKwimat(const QList<CKwMaterial>& materials);

// Converts a value given in `unit` to SI for a quantity of `unitKind` (KwUnitKind). False for a
// unit this quantity cannot be given in. An empty unit is accepted only for dimensionless
// quantities.
KWICAD_EXPORT bool ToInternal(double value, const QString& unit, int unitKind, double* out);

// --- the database folder ---
// Settings section and value of the folder, and the caller tag every access is logged with.
inline constexpr const char* SettingsSection = "Database Settings";
inline constexpr const char* SettingsEntry = "Materials Database Path";
inline constexpr const char* CallerTag = "CKwMaterialDialog::LoadMaterialFromDB";

// The base data folder of the add-in: KW_DATA_DIR when set, else the folder of the program.
KWICAD_EXPORT QString BaseDataFolder();
// The folder from the settings; when none is stored, the base data folder followed by
// "Materials", which is then written back.
KWICAD_EXPORT QString DatabaseFolder();
// Remembers the folder the user chose a file in.
KWICAD_EXPORT void RememberFolder(const QString& folder);

} // namespace KwMaterialDatabase
