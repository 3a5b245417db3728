#pragma once

#include "ZORIContainer.h"
#include "ZORUnicodeString.h"

// A data model: its kind, the schema that it follows and the container of its components.
//
//     ZORIDuxModel_var model(container);        // the model behind a container
//     model->GetSchema();
//
// The order of the operations is part of the binary interface. Thread rule: one thread at a time.
class ZOR_EXPORT ZORIDuxModel : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    ZORIDuxModel();
    ~ZORIDuxModel() override;

    // The model's container, the same one at every call; a null handle when the model has none. The
    // container keeps the model alive.
    virtual ZORIContainer_var GetContainer() = 0;
    // The kind of model.
    virtual ZORUnicodeString GetModelType() = 0;
    // The name of the schema that the model follows.
    virtual ZORUnicodeString GetSchema() = 0;
};

// A handle on it.
using ZORIDuxModel_var = ZORHandle<ZORIDuxModel>;
