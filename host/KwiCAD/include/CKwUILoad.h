#pragma once
// Logic of the load editor. It owns the list of load types (grouped under heading rows) and
// their names, fills the dialog through control codes (name, ID, types, subtypes, magnitude
// and its caption, direction, location, thermal values, tables, results file, subcases,
// selection prompt, colour), takes choices through the value interface, keeps every number in
// internal units, routes picks to the entities or to the location, validates with its own
// field messages and writes the load into the model.
#include "CKwFEUIBase.h"
#include "CKwLoad.h"
#include "KwNumbers.h"

#include <QStringList>
#include <map>
#include <vector>

class CKwAnalysis;

// Which parts of the editor a load type shows.
namespace KwLoadPanel {
enum : int {
    None = 0,        // heading rows
    Vector = 1,      // magnitude, direction, total force or force per entity
    Scalar = 2,      // magnitude only
    Temperature = 3,
    HeatFlux = 4,
    Convection = 5,  // ambient temperature, convection coefficient
    Radiation = 6,   // ambient temperature, absorptivity, emissivity
    RemoteForce = 7, // vector plus a location
    Rotational = 8,  // angular velocity, origin, rotational vector
    Bearing = 9,
    Hydrostatic = 10, // fluid density, gravity direction, point on the fluid surface
    FromOutput = 11,  // results file
    Enforced = 12,    // subtype, magnitude, direction
    Initial = 13,     // subtype, magnitude, direction
};
}

// What a load type needs, beside its panel.
namespace KwLoadFlag {
enum : unsigned {
    Direction = 0x1,
    Distribution = 0x2,    // total force or force per entity
    TimeTable = 0x4,
    TemperatureTable = 0x8,
    NeedsEntities = 0x10,  // without entities the load cannot be written
    Location = 0x20,       // remote point, rotational origin, point on the fluid surface
    LocationByNode = 0x40, // the location may also be a node
    ResultsFile = 0x80,
};
}

// One row of the load-type list.
struct KwLoadTypeRow
{
    int code;             // CKwLoad::Type; -1 for a heading row
    const char* key;      // language key of the name, section "Loads"
    const char* english;  // English name
    int panel;            // KwLoadPanel
    int unitKind;         // KwUnitKind of the magnitude; 0 for none, -1 by subtype
    unsigned accepts;     // CKwUIEntity::FilterBit()s of what the load acts on
    const char* promptSection; // selection prompt
    const char* promptKey;
    const char* promptEnglish;
    unsigned flags;       // KwLoadFlag
};

class KWICAD_EXPORT CKwUILoad : public CKwFEUIBase<CKwLoad>
{
public:
    // Control codes the logic addresses.
    enum Code {
        CodeName = 1,
        CodeID = 2,
        CodeTypeItems = 3,      // type combo: every row including the headings
        CodeSubtypeItems = 4,   // enforced-motion or initial-condition subtypes
        CodeMagnitude = 5,
        CodeMagnitudeLabel = 6, // "Magnitude (N):"
        CodeDirectionX = 7,     // 7..9: direction or rotational vector components
        CodeLocationX = 10,     // 10..12: location coordinates
        CodeSubcaseItems = 13,
        CodeSubcaseSelection = 14,
        CodeAmbientTemperature = 15,
        CodeConvectionCoefficient = 16,
        CodeAbsorptivity = 17,
        CodeEntities = 18,      // the selection box's prompt
        CodeEmissivity = 19,
        CodeLocationEntity = 20, // the location box's prompt
        CodeColor = 21,
        CodeTimeTables = 22,     // table combos; the last item is "New Table"
        CodeTemperatureTables = 23,
        CodeResultsFile = 24,
        CodeAmbientLabel = 25,   // "Ambient Temperature (K):"
    };
    // Fields of the value interface.
    enum Field {
        FieldType = 3,
        FieldSubtype = 4,
        FieldDistribution = 5,
        FieldLocationMode = 6,
        FieldTimeDependent = 7,
        FieldTimeTable = 8,        // a table id; 0 for none
        FieldTemperatureDependent = 9,
        FieldTemperatureTable = 10,
        FieldPickTarget = 11,      // where picks go: PickEntities or PickLocation
        FieldSize = 15,
        FieldDensity = 16,
        FieldColor = 17,
    };
    enum PickTarget { PickEntities = 0, PickLocation = 1 };

    CKwUILoad();
    ~CKwUILoad() override;

    // The analysis whose subcases are offered.
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    // A submit keeps the tables made and edited from this editor; a cancel takes them back.
    long OnSubmitUI() override;
    long OnCancelUI() override;
    QString GetPageTitleString() const override;
    // The entities the load acts on and, after them, its picked location.
    QList<CKwUIEntity*> GetSelectedEntities() const override;

    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    void SetListValue(int code, const QList<int>& values) override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // --- the type list ---
    static const KwLoadTypeRow* GetTypeRows(int* count);
    // Rows of the type combo, headings included.
    static int GetTypeRowCount();
    static bool IsHeadingRow(int row);
    // Combo row -> type code; -1 for a heading row or a row out of range.
    static int TypeOfRow(int row);
    // Type code -> combo row; -1 for a code no row has.
    static int RowOfType(int type);
    int GetTypeFromSelection(int row) const override { return TypeOfRow(row); }
    int GetSelectionFromType(int type) const override { return RowOfType(type); }
    // The row of a type code, or null.
    static const KwLoadTypeRow* GetTypeRow(int type);
    // The name of a type in the current language; empty for an unknown code.
    static QString GetTypeName(int type);
    // Names of every row in order, headings included.
    static QStringList GetTypeItems();
    // Subtype names of enforced motion and initial conditions; empty for other types.
    static QStringList GetSubtypeItems(int type);
    // Unit kind of the magnitude of a type and subtype; 0 when the type has no magnitude.
    static int GetUnitKind(int type, int subtype);

    // --- the edited load ---
    int GetMagnitudeUnitKind() const;
    // "Magnitude (N):", "Heat Flux (W/m^2):", "Temperature (C):", ...
    QString GetMagnitudeCaption() const;
    // Ids of the tables behind the rows of a table combo (the "New Table" row is -1).
    int GetTableIdAtRow(int use, int row) const;
    int GetRowOfTable(int use, int id) const;
    // Refills the two table combos (after a table was added or deleted).
    void LoadTableItems();
    // Names in the view's bubble the load's table of this use (KwTableLookup::Use) when the
    // model no longer has it; false when there is nothing to report.
    bool ReportMissingTable(int use);
    // Adds an empty table of this use to the model ("New Table 3", counting the tables of the
    // use) and returns its id (0 without a model). It stays only when the load is submitted:
    // DropNewTable or cancelling the editor deletes it again.
    int AddNewTable(int use);
    // Deletes a table AddNewTable made; other tables are left alone.
    void DropNewTable(int id);
    // Call before a table of the model is edited from this editor: cancelling the editor puts
    // back what the table holds now.
    void KeepTableForCancel(int id, int use);

protected:
    std::unique_ptr<CKwLoad> CreateNewObject() override;
    QList<CKwLoad*>* GetModelList() const override;

private:
    struct FieldError
    {
        int code;
        int status; // KW_UOM::ParseStatus
        QString unitSeen;
    };
    const KW_UOM* units() const;
    QString shown(double internalValue, int unitKind) const;
    void readNumber(int code, int unitKind, double* target);
    int validateNumber(double value, int unitKind, double min, double max,
                       bool minExclusive, const QString& label);
    QString fieldLabel(int code) const;
    void loadTypeDependent(bool keepTypedValues);
    // After a type or subtype change: the magnitude of the new quantity as last typed while
    // the editor is open, else empty.
    void switchMagnitudeKind(int oldKind);
    bool acceptsLocation(const CKwUIEntity* e) const;

    CKwAnalysis* m_analysis = nullptr;
    int m_pickTarget = PickEntities;
    std::vector<FieldError> m_fieldErrors;
    std::vector<int> m_tableRows[2]; // ids per row: time, temperature
    struct TypedMagnitude
    {
        QString text; // as typed, when the dialog has the field
        bool hasText = false;
        double value = MissingDouble;
    };
    std::map<int, TypedMagnitude> m_typedMagnitudes; // by unit kind
    // Tables this editor added to the model, and what the tables it edited held before.
    struct KeptTable
    {
        int id;
        int use;
        QString name;
        std::vector<double> x, y;
        int xUnit, yUnit;
    };
    std::vector<int> m_addedTables;
    std::vector<KeptTable> m_keptTables;
};
