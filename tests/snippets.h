#pragma once

// What the snippets in the comments of the public headers take for granted: see snippets.sh. It is
// compiled, and never linked.

#include "ZORCallbackManager.h"
#include "ZORHandle.h"
#include "ZORIContainer.h"
#include "ZORIDuxServices.h"
#include "ZORImplementationAdapter.h"
#include "ZORMsgCatalog.h"
#include "ZORTrace.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

struct Point {
    int x, y;
};
struct Part : ZORImplementationAdapter {
};
struct SomeComponent : ZORBaseUnknown {
};
struct SomeInterface : ZORBaseUnknown {
    ZOR_DECLARE_CLASS
public:
    virtual void Operation() = 0;
};
struct SomeClass : ZORBaseUnknown {
    ZOR_DECLARE_CLASS
public:
    void Operation();
};
ZORBaseUnknown* CreateTIESomeInterfaceSomeClass(ZORBaseUnknown* iObject);

void OnPartOpened(ZORBaseUnknown*, const char*, ZORNotification*, void*);
void OnChanged(ZORBaseUnknown*, const char*, ZORNotification*, void*);
void Show(const ZORBaseUnknown_var& iComponent);
std::string Edited(const std::string& iText);

// A snippet is a function of such a class.
struct Surroundings : ZORBaseUnknown {
    ZORIDuxServices_var services;
    ZORIContainer_var container;
    Part* part;
    Part* assembly;
    ZORBaseUnknown* object;
    ZORBaseUnknown* sender;
    ZOREventSubscriber* model;
    ZOREventSubscriber* view;
    ZORCallbackManager* manager;
    ZORNotification* notification;
    ZORMsgCatalog* catalog;
    ZORTrace trace;
    ZORUnicodeString mask;
    long count;
};
