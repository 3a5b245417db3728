#include "ZORIDuxMaskEditor.h"

ZOR_IMPLEMENT_CLASS(ZORIDuxMaskEditor, ZORKindInterface, ZORBaseUnknown)

ZORIDuxMaskEditor::ZORIDuxMaskEditor() = default;

ZORIDuxMaskEditor::~ZORIDuxMaskEditor() = default;
