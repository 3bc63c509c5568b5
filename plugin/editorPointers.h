// editorPointers: the plug-in's two process-wide pointers: the single Vorel window and the
// model it owns. Both are null until vorelCmd first runs without flags, and null again after
// the plug-in unloads. Every command object reaches the model through editorModel only.
#pragma once

class vorelWindow;
class weightTableModel;

extern vorelWindow* editorWindow;
extern weightTableModel* editorModel;
