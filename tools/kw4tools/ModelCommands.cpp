// schema, container, classes: schema libraries, models and the classes behind interfaces.

#include "ChildProcess.h"
#include "Commands.h"
#include "Failure.h"
#include "Program.h"
#include "SchemaCheck.h"
#include "ToldErrors.h"
#include "ZORIDuxModel.h"
#include "ZORLoadExternalSchema.h"

#include <cstring>
#include <iostream>
#include <unistd.h>

namespace
{

const char kGroup[] = "Models";
const char kSchemaHelp[] = "The schema's name: its library is \"lib\", the name and \".so\"";

constexpr std::string_view kLoaded = "loaded";

// Runs in a child: the library's code may do anything there, and lack anything.
void Load(Session& ioSession, const std::string& iName, const std::optional<std::string>& iPath,
          int iReport)
{
    try {
        if (iPath)
            TellingErrors([&] { ZORLoadExternalSchema(iName.c_str(), iPath->c_str()); });
        else
            ioSession.Services().LoadSchema(Text(iName));
        if (write(iReport, kLoaded.data(), kLoaded.size()) < 0)
            std::cerr << "kw4tools: cannot tell that the schema was loaded" << std::endl;
    } catch (const ZORRaisedError&) { // has been told
    } catch (const std::exception& error) {
        std::cerr << "kw4tools: " << error.what() << std::endl;
    } catch (...) {
        std::cerr << "kw4tools: something unknown was raised" << std::endl;
    }
}

void AddLoad(Command& ioSchema)
{
    Command& load = ioSchema.Add("load", "Load a schema library and run its creation function");
    const std::string& name = load.Argument("NAME", kSchemaHelp);
    const std::optional<std::string>& path = load.Option(
        "--path", "FILE", "Load this file, wherever the library would be found", Completion::File);
    load.Explains("The library is found in the current directory or along LD_LIBRARY_PATH; its\n"
                  "creation function is \"fctCreate\" and the name.");
    load.Example("kw4tools schema load AP214");
    load.Does([&](Session& ioSession) {
        const ChildOutcome outcome =
            RunInChild([&](int iReport) { Load(ioSession, name, path, iReport); });
        if (outcome.signal)
            throw Failure("the schema '" + name +
                          "' ended its process: " + strsignal(outcome.signal));
        if (outcome.report != kLoaded)
            throw Failure("the schema '" + name + "' was not loaded; 'kw4tools schema check " +
                          name + "' lists what its library lacks");
        return Status::Yes;
    });
}

void AddCheck(Command& ioSchema)
{
    Command& check = ioSchema.Add("check", "Tell what a schema library lacks to be loaded");
    const std::string& name = check.Argument("NAME", kSchemaHelp);
    check.Explains("Prints what is missing, one thing a line: the library, a dependency, a symbol\n"
                   "or the creation function. Exit status 1 when there is any. Nothing of\n"
                   "the library is run.");
    check.Example("kw4tools schema check AP214");
    check.Does([&](Session& ioSession) {
        const SchemaCheck checked(name);
        for (const std::string& thing : checked.Missing())
            ioSession.Out().Line(thing);
        return YesIf(checked.Missing().empty());
    });
}

void AddContainer(Program& ioProgram)
{
    Command& container =
        ioProgram.Add(kGroup, "container", "Make a container over a new model, and tell of it");
    const std::string& type = container.Argument("TYPE", "The model's type");
    const std::string& schema = container.Argument("SCHEMA", "The name of its schema");
    container.Explains("Prints type and schema as the model behind the container reports them.");
    container.Example("kw4tools container Assembly AP214");
    container.Does([&](Session& ioSession) {
        const ZORIContainer_var made =
            ioSession.Services().CreateSimpleContainer(Text(type), Text(schema));
        const ZORIDuxModel_var model(made);
        ioSession.Out().Line(std::string(View(model->GetModelType())) + " " +
                             std::string(View(model->GetSchema())));
        return Status::Yes;
    });
}

void AddClasses(Program& ioProgram)
{
    Command& classes = ioProgram.Add(kGroup, "classes", "Print the classes with an interface");
    const std::string& interface = classes.Argument("INTERFACE", "The interface's name");
    classes.Explains("One class a line, in the order they became known.");
    classes.Example("kw4tools classes ZORIDuxServices");
    classes.Does([&](Session& ioSession) {
        for (const ZORUnicodeString& name : ioSession.Services().GetDynamicObjList(Text(interface)))
            ioSession.Out().Line(View(name));
        return Status::Yes;
    });
}

} // namespace

void AddModelCommands(Program& ioProgram)
{
    Command& schema = ioProgram.Add(kGroup, "schema", "Load and check schema libraries");
    schema.Explains("A schema library delivers a data schema; \"load\" runs its code, \"check\" "
                    "finds out\nwhy it would not.");
    schema.Example("kw4tools schema check AP214");
    AddLoad(schema);
    AddCheck(schema);
    AddContainer(ioProgram);
    AddClasses(ioProgram);
}
