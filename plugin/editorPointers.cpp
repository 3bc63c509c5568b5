#include "editorPointers.h"

vorelWindow* editorWindow = nullptr;
weightTableModel* editorModel = nullptr;
