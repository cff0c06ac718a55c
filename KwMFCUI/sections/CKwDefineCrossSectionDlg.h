#pragma once
// Definition of a beam or bar cross section: one of twenty library shapes with its dimensions
// at End A (and End B for a tapered beam), a picture of the shape, the section drawn to scale
// with its values, rotation in steps, and a small XML file to keep a section for later.
// The dialog works on a clone of the property; only OK copies it back.
#include "CKwMFCDialog.h"
#include "KwSectionTypes.h"

#include <QDomDocument>
#include <QString>
#include <functional>
#include <memory>

class CKwPhysicalProperty;
class KW_UOM;
class QComboBox;
class QLabel;
class QLineEdit;
class QPainter;
class QPushButton;
class QCheckBox;
class QWidget;

class KWMFCUI_EXPORT CKwDefineCrossSectionDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    enum ControlId
    {
        IDC_GROUP_DIMENSIONS = 1230,
        IDC_COMBO_SHAPE = 1232,
        IDC_DIM1_LABEL = 1233, // .. 1238
        IDC_ENDA_DIM1 = 1239,  // .. 1244
        IDC_CHECK_TAPERED = 1246,
        IDC_ENDB_DIM1 = 1247,  // then 1249 .. 1253
        IDC_LABEL_ENDB = 1248,
        IDC_LABEL_ENDA = 1254,
        IDC_DRAW_AREA = 1275,
        IDC_OK = 1276,
        IDC_LABEL_SHAPE = 1277,
        IDC_PROP_ENDA_FIRST = 1278, // nine per end, End B from 1287
        IDC_PROP_ENDB_FIRST = 1287,
        IDC_LABEL_SC_Z = 1296,
        IDC_LABEL_SC_Y = 1297,
        IDC_GROUP_PROPERTIES = 1298,
        IDC_LABEL_AREA = 1299,
        IDC_LABEL_IZZ = 1300,
        IDC_LABEL_IYY = 1301,
        IDC_LABEL_IZY = 1302,
        IDC_LABEL_J = 1303,
        IDC_LABEL_KZ = 1304,
        IDC_LABEL_KY = 1305,
        IDC_PICTURE = 1306,
        IDC_DRAW_ENDB = 1307,
        IDC_DRAW_ENDA = 1308,
        IDC_COMBO_REFPOINT = 1309,
        IDC_ROTATE_CW = 1310,  // "<<"
        IDC_ROTATE_CCW = 1311, // ">>"
        IDC_SAVE = 1312,
        IDC_LOAD = 1313,
        IDC_LABEL_REFPOINT = 1314,
        IDC_LABEL_PROP_ENDA = 1315, // headings of the two property columns
        IDC_LABEL_PROP_ENDB = 1316,
        IDC_CANCEL = 2,
    };
    // Pictures of the shapes by code (the L picture has its own id).
    static constexpr int kPictureL = 348;
    static int PictureIdOf(int shapeCode);
    // The order of the property rows, as positions in the array of section values.
    static constexpr int kPropertyRows[9] = {0, 1, 2, 3, 5, 6, 7, 11, 12};

    CKwDefineCrossSectionDlg(CKwPhysicalProperty* property, KW_UOM* units, CFMView* view,
                             QWidget* parent = nullptr);
    ~CKwDefineCrossSectionDlg() override;

    // Shape check of one end's values: 0 valid, 1 nothing entered, 2 a zero dimension, 3 a
    // missing dimension, a failed rule or an unknown shape.
    static int ValidateShape(int shapeCode, const double* dims);
    int ValidateDimensions(int endA);
    // Checks the enabled dimension edits as numbers in the length unit; 0 and a bubble tip at
    // the first bad one, 1 when all pass.
    int ValidateError(int count);
    void UpdateDimensions();
    void UpdateDimensionControls();
    void UpdateCrossSectionBitmap();
    void EnableDimensions(int count);
    void EnableTaperBeamOptions(int enable);
    void UpdateSectionProperties(const double* props, int end);
    void ClearProperties(int end);
    // Empties the shown end's values, checks it, and (when valid) draws it onto `painter` in
    // `area` and shows its values. A null painter only updates the values.
    void DrawCrossSection(int end, QPainter* painter = nullptr, const QRect& area = QRect());
    void DrawControlPoints(QPainter& painter, const QList<QPointF>& points);
    // "%0.3f" on [0.001, 10000], "%0.3E" otherwise.
    static QString FormatPropertyValue(double displayValue);

    void OnDefineCSOK();
    void OnOK() override { OnDefineCSOK(); }
    void OnCancel() override;
    void OnSelChangeComboShape();
    void OnCheckTaperedBeam();
    void OnBnClickedDrawEndA();
    void OnBnClickedDrawEndB();
    void OnBnClickedDefineCSMoveClockWise();
    void OnBnClickedDefineCSMoveAnticlockwise();
    void OnBnClickedLoad();
    void OnBnClickedSave();
    void OnHelpInfo();
    void SetTextToCurrentLang() override;

    // The file itself, without the file choosers.
    static QString FileFilter();
    bool SaveToFile(const QString& path);
    bool LoadFromFile(const QString& path);
    // Reads a section document into the working copy; false (nothing changed) for a document
    // that is not one.
    bool LoadFromBytes(const QByteArray& bytes);
    QByteArray SaveToBytes() const;
    static void AppendChildWithAttribute(QDomDocument& doc, QDomElement& parent,
                                         const QString& elementName,
                                         const QString& attributeName, const QString& value);

    CKwPhysicalProperty* GetWorkingCopy() const { return m_pClone; }
    int GetShownEnd() const { return m_nShownEnd; }
    int GetPictureId() const { return m_nPictureId; }
    bool IsRedrawNeeded() const { return m_bRedraw; }
    // Set by the file choosers' replacement in tests and scripted hosts: returns the path to use.
    using FileChooser = std::function<QString(bool save)>;
    void SetFileChooser(FileChooser chooser) { m_chooser = std::move(chooser); }

protected:
    bool OnInitDialog() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildControls();
    QLineEdit* dimEdit(int end, int i) const;
    QLineEdit* propEdit(int end, int row) const;
    const KW_UOM* units() const;
    void repaintSection();
    bool isBeamTapered() const;

    CKwPhysicalProperty* m_pProperty;
    CKwPhysicalProperty* m_pClone;
    KW_UOM* m_pUnits;
    std::unique_ptr<KW_UOM> m_ownUnits;
    int m_nShownEnd = 1;
    bool m_bRedraw = false;
    int m_nPictureId = -1;
    bool m_bFilling = false;
    FileChooser m_chooser;

    QComboBox* m_shape = nullptr;
    QComboBox* m_refPoint = nullptr;
    QCheckBox* m_tapered = nullptr;
    QLabel* m_picture = nullptr;
    QWidget* m_canvas = nullptr;
    QLineEdit* m_dims[2][6] = {};  // [0] End B, [1] End A
    QLabel* m_dimLabels[6] = {};
    QLineEdit* m_props[2][9] = {};
};
