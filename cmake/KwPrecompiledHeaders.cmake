# Precompiled headers: the Qt and standard headers that most sources include are parsed once per
# target instead of once per source. The library, the reference host's widget library and the
# test support each compile their own (their compile flags differ); every test program reuses
# the test support's, whose flags it shares.
# KW_PCH=OFF builds without them, which also shows a source that forgot an include.
option(KW_PCH "Precompile the Qt and standard headers that most sources include" ON)

set(KW_PCH_HEADERS
  <algorithm> <array> <cmath> <functional> <limits> <memory> <vector>
  <QString> <QStringList> <QList> <QHash> <QMap> <QPointer> <QObject> <QEvent> <QTimer>
  <QWidget> <QApplication> <QDialog> <QLabel> <QLineEdit> <QPushButton> <QComboBox>
  <QCheckBox> <QGroupBox> <QVBoxLayout> <QHBoxLayout> <QGridLayout> <QHeaderView>
  <QTableView> <QTreeWidget> <QPainter> <QMessageBox>)

# Gives `target` its own precompiled header of the shared list plus any extra headers.
function(kw_precompile target)
  if(KW_PCH)
    target_precompile_headers(${target} PRIVATE ${KW_PCH_HEADERS} ${ARGN})
  endif()
endfunction()

# Lets `target` use the precompiled header of `from` (same compile flags).
function(kw_reuse_precompiled target from)
  if(KW_PCH AND TARGET ${from})
    target_precompile_headers(${target} REUSE_FROM ${from})
  endif()
endfunction()
