#include "ZORIDuxModel.h"

ZOR_IMPLEMENT_CLASS(ZORIDuxModel, ZORKindInterface, ZORBaseUnknown)

ZORIDuxModel::ZORIDuxModel() = default;

ZORIDuxModel::~ZORIDuxModel() = default;
