// kw4tools search, find, split, env, expand

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

// A site with a file in several places, and a search path over them.
class Site
{
public:
    Site()
    {
        for (const char* file : {"a/one", "b/one", "b/two", "c/three", "here", "a/here"})
            _Program.Site().Write(file, "");
        _Program.Run().Environment("SITE", Root()).Environment("UNSET", std::nullopt);
    }
    Kw4tools& Program() { return _Program; }
    std::string Root() const { return _Program.Site().Path(); }
    void SearchPath(const std::string& iPath) { Put("DUX_SEARCH_PATH", iPath); }
    void Put(const std::string& iName, const std::string& iValue)
    {
        ASSERT_EQ(_Program.Result({"settings", "put", "DUXAdmin", iName, iValue}), "");
    }

private:
    Kw4tools _Program;
};

} // namespace

TEST(kw4tools_search, FindsAlongTheSearchPathThenInTheNamedDirectoryThenInTheCurrentOne)
{
    Site site;
    site.SearchPath(site.Root() + "/a:$SITE/b:$$THIRD");
    site.Put("THIRD", "$SITE/c");
    const struct {
        const char* name;
        std::string found; // empty: not found
    } rows[] = {
        {"one", site.Root() + "/a/one"},
        {"two", site.Root() + "/b/two"},
        {"three", site.Root() + "/c/three"},
        {"c/one", site.Root() + "/a/one"}, // the search path comes first
        {"nowhere/here", site.Root() + "/a/here"},
        {"DUXAdmin.toml", "DUXAdmin.toml"},
        {"./DUXAdmin.toml", "./DUXAdmin.toml"},
        {"/nowhere/DUXAdmin.toml", "DUXAdmin.toml"},
        {"nothing", ""},
        {"a/nothing", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto [status, out, err] = site.Program()({"search", row.name});
        EXPECT_EQ(status, row.found.empty() ? 1 : 0);
        EXPECT_EQ(out, row.found.empty() ? "" : row.found + "\n");
        EXPECT_EQ(err, "");
    }
}

TEST(kw4tools_search, ExplainPrintsEveryPlaceInOrderWithItsVerdict)
{
    Site site;
    const std::string root = site.Root();
    site.SearchPath("/nowhere:$SITE/a:$$THIRD:$$NONE:$UNSET/x");
    site.Put("THIRD", "$SITE/c");
    const std::string notes = "along the search path (DUX_SEARCH_PATH in DUXAdmin):\n"
                              "  $SITE gives " +
                              root +
                              "/a\n"
                              "  $$THIRD gives $SITE/c\n"
                              "  $SITE gives " +
                              root +
                              "/c\n"
                              "  $$NONE is empty or not set\n"
                              "  $UNSET is empty or not set, and stays as it is\n";

    const auto hit = site.Program()({"search", "one", "--explain"});
    EXPECT_EQ(hit.status, 0);
    EXPECT_EQ(hit.out, root + "/a/one\n");
    EXPECT_EQ(hit.err, "looking for one\n" + notes +
                           "  not there  /nowhere/one\n"
                           "  found      " +
                           root + "/a/one\n");

    const std::string along = "  not there  /nowhere/two\n"
                              "  not there  " +
                              root +
                              "/a/two\n"
                              "  not there  " +
                              root +
                              "/c/two\n"
                              "  not there  $UNSET/x/two\n";
    EXPECT_EQ(site.Program()({"search", "--explain", "b/two"}).err,
              "looking for b/two\n" + notes + along +
                  "in the directory that the name gives:\n"
                  "  found      b/two\n");

    const auto miss = site.Program()({"search", "--explain", "c/two"});
    EXPECT_EQ(miss.status, 1);
    EXPECT_EQ(miss.out, "");
    EXPECT_EQ(miss.err, "looking for c/two\n" + notes + along +
                            "in the directory that the name gives:\n"
                            "  not there  c/two\n"
                            "in the current directory:\n"
                            "  not there  two\n"
                            "not found\n");

    site.Program().Site().Write("two", "");
    EXPECT_THAT(site.Program()({"search", "--explain", "two"}).err,
                HasSubstr("in the current directory:\n  found      two\n"));
}

TEST(kw4tools_search, ExplainTellsThatThereIsNoSearchPath)
{
    Site site;
    EXPECT_EQ(site.Program()({"search", "here", "--explain"}).err,
              "looking for here\n"
              "along the search path (DUX_SEARCH_PATH in DUXAdmin):\n"
              "  it is empty or not set\n"
              "in the current directory:\n"
              "  found      here\n");
}

// A directory of the path may be named like the hit that the one before it would have been.
TEST(kw4tools_search, ExplainIsNotMisledByDirectoriesNamedLikeTheFile)
{
    Site site;
    site.SearchPath("/nowhere:/nowhere/one");
    EXPECT_THAT(site.Program()({"search", "x/one", "--explain"}).err,
                HasSubstr("  not there  /nowhere/one\n"
                          "  not there  /nowhere/one/one\n"
                          "in the directory that the name gives:\n"
                          "  not there  x/one\n"));
    site.SearchPath("/nowhere:/nowhere/one:$SITE/a");
    EXPECT_THAT(site.Program()({"search", "one", "--explain"}).err,
                HasSubstr("  not there  /nowhere/one\n"
                          "  not there  /nowhere/one/one\n"
                          "  found      " +
                          site.Root() + "/a/one\n"));
}

TEST(kw4tools_search, ExplainReadsNamesWithLineEndsAndEqualsSigns)
{
    Site site;
    site.SearchPath("a\nb:c = d");
    EXPECT_THAT(site.Program()({"search", "x\n = y", "--explain"}).err,
                HasSubstr("  not there  a\nb/x\n = y\n"
                          "  not there  c = d/x\n = y\n"));
}

// A name that ends in "/" asks for a directory; when none is there the search still says "found".
TEST(kw4tools_search, ANameThatEndsInASlashFindsADirectoryOrNothing)
{
    Site site;
    EXPECT_EQ(site.Program().Result({"search", "a/"}), "a/\n");
    const auto miss = site.Program()({"search", "nothing/", "--explain"});
    EXPECT_EQ(miss.status, 1);
    EXPECT_EQ(miss.out, "");
    EXPECT_THAT(miss.err, HasSubstr("  not there  nothing/\nnot found\n"));
}

TEST(kw4tools_search, ExplainAndTraceWorkTogether)
{
    Site site;
    site.SearchPath("$SITE/a");
    const std::string explained = site.Program()({"search", "one", "--explain"}).err;
    const std::string traced = site.Program()({"search", "one", "--trace"}).err;
    EXPECT_THAT(traced, HasSubstr("   ZORDuxServices::SearchPath GoodPath = "));
    EXPECT_EQ(site.Program()({"--trace", "search", "one", "--explain"}).err, traced + explained);

    const std::string file = site.Root() + "/trace";
    site.Program().Run().Environment("ZOR_PSN_TRACE_FILE", file);
    EXPECT_EQ(site.Program()({"--trace", "search", "one", "--explain"}).err, explained);
    EXPECT_EQ(site.Program().Site().Read("trace"), traced);
}

TEST(kw4tools_search, ExplainAndTheTraceOfTheEnvironmentWorkTogether)
{
    Site site;
    site.SearchPath("$SITE/a");
    const std::string explained = site.Program()({"search", "one", "--explain"}).err;
    site.Program().Run().Environment("ZOR_PSN_TRACE_CALLS", "1");
    EXPECT_EQ(site.Program()({"search", "one", "--explain"}).err, explained);
    site.Program().Run().Environment("ZOR_PSN_TRACE", "42");
    const std::string traced = site.Program()({"search", "one"}).err;
    EXPECT_THAT(traced, HasSubstr("> ZORDuxServices::SearchPath\n"));
    EXPECT_THAT(site.Program()({"search", "one", "--explain"}).err, HasSubstr(explained));
}

TEST(kw4tools_search, SaysWhatToDoWhenTheSearchPathCannotBeRead)
{
    Site site;
    site.SearchPath("/nowhere:$$");
    const auto empty = site.Program()({"search", "one", "--explain"});
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(empty.out, "");
    EXPECT_THAT(empty.err, HasSubstr("line 814\n"));
    EXPECT_THAT(empty.err, HasSubstr("looking for one\n"
                                     "along the search path (DUX_SEARCH_PATH in DUXAdmin):\n"
                                     "  $$ cannot be read\n"
                                     "an error ended the search\n"));
    EXPECT_THAT(empty.err,
                HasSubstr("kw4tools: the search path cannot be read: an entry of the setting "
                          "DUX_SEARCH_PATH in the settings file DUXAdmin is \"$$\" and no name"));
    site.Program().Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH = \n");
    const auto damaged = site.Program()({"search", "one", "--explain"});
    EXPECT_EQ(damaged.status, 2);
    EXPECT_THAT(damaged.err, HasSubstr("DUXAdmin.toml: line 1, column "));
    EXPECT_THAT(damaged.err, HasSubstr("  it cannot be read\nan error ended the search\n"));
    EXPECT_THAT(damaged.err, HasSubstr("kw4tools: the search path cannot be read: mend the setting "
                                       "DUX_SEARCH_PATH"));
}

TEST(kw4tools_find, PrintsTheFirstPlaceOrNothing)
{
    Site site;
    EXPECT_EQ(site.Program().Result({"find", "one", "nowhere:b:a"}), "b/one\n");
    EXPECT_EQ(site.Program().Result({"--separator", ";", "find", "one", "nowhere;a"}), "a/one\n");
    const auto [status, out, err] = site.Program()({"find", "nothing", "a:b"});
    EXPECT_EQ(status, 1);
    EXPECT_EQ(out + err, "");
    EXPECT_EQ(site.Program()({"find", "one", ""}).status, 1);
}

TEST(kw4tools_split, PrintsOneDirectoryALine)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"split", "::a: b ::"}), "a\nb\n");
    EXPECT_EQ(program.Result({"split", "a: :b"}), "a\n\nb\n");
    EXPECT_EQ(program.Result({"split", ""}), "");
    EXPECT_EQ(program.Result({"split", ":::"}), "");
}

TEST(kw4tools_env, PrintsTheDirectoriesAndTellsUnsetFromEmpty)
{
    Kw4tools program;
    program.Run()
        .Environment("LIST", "/a: :/b")
        .Environment("EMPTY", "")
        .Environment("UNSET", std::nullopt);
    EXPECT_EQ(program.Result({"env", "LIST"}), "/a\n/b\n");
    EXPECT_EQ(program.Result({"env", "EMPTY"}), "");
    EXPECT_EQ(program.Result({"--separator", "/", "env", "LIST"}), "a: :\nb\n");
    for (const char* name : {"UNSET", "", "LIST=", "$LIST"}) {
        const auto [status, out, err] = program({"env", name});
        EXPECT_EQ(status, 1);
        EXPECT_EQ(out + err, "");
    }
}

TEST(kw4tools_expand, ReplacesTheFirstVariable)
{
    Kw4tools program;
    program.Run()
        .Environment("DIR", "/home/u/")
        .Environment("EMPTY", "")
        .Environment("UNSET", std::nullopt);
    const struct {
        const char* path;
        const char* expanded;
    } rows[] = {
        {"$DIR/lib", "/home/u/lib"},
        {"/opt/$DIR", "/opt/home/u/"},
        {"/plain", "/plain"},
        {"$UNSET/lib", "$UNSET/lib"},
        {"$EMPTY/lib", "$EMPTY/lib"},
        {"", ""},
        {"$DIR/$DIR", "/home/u/$DIR"},
        {"$", "$"},
        {"$$DIR", "$$DIR"},
        {"DIR/$DIR", "/home/u/DIR"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(program.Result({"expand", row.path}), std::string(row.expanded) + "\n");
    }
}
