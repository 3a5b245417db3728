#include "ZORImplementationAdapter.h"

#include <algorithm>
#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Part = ZORHandle<ZORImplementationAdapter>;

Part MakePart()
{
    return Part::Adopt(new ZORImplementationAdapter);
}

std::vector<const ZORBaseUnknown*> Pointing(const Part& iPart)
{
    std::vector<const ZORBaseUnknown*> objects;
    for (const ZORBaseUnknown_var& each : iPart->GetInverseLinks())
        objects.push_back(each.Get());
    return objects;
}

} // namespace

TEST(ZORImplementationAdapter, HasTheNameItWasGiven)
{
    const Part part = MakePart();
    EXPECT_EQ(part->GetName(), "");
    EXPECT_STREQ(part->GetName_B(), "");
    part->SetName("plaque d'acier é");
    EXPECT_EQ(part->GetName(), "plaque d'acier é");
    EXPECT_STREQ(part->GetName_B(), "plaque d'acier é");
    part->SetName("");
    EXPECT_EQ(part->GetName(), "");
}

TEST(ZORImplementationAdapter, ItsSymbolicLinkIsClassAndName)
{
    const Part part = MakePart();
    EXPECT_EQ(part->GetSymbolicLink(), "");
    part->SetName("plate");
    EXPECT_EQ(part->GetSymbolicLink(), "ZORImplementationAdapter plate");
}

TEST(ZORImplementationAdapter, KeepsOneIdentifierThatNoOtherObjectHas)
{
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const Part part = MakePart();
        const ZORUnicodeString identifier = part->GetIdentifier();
        EXPECT_EQ(identifier.GetLengthInChar(), 36);
        EXPECT_EQ(part->GetIdentifier(), identifier);
        EXPECT_TRUE(seen.insert(identifier.ConvertToChar()).second);
    }
}

TEST(ZORImplementationAdapter, KnowsTheObjectsThatPointToIt)
{
    const Part plate = MakePart();
    const Part box = MakePart();
    const Part crate = MakePart();
    EXPECT_THAT(plate->GetInverseLinks(), IsEmpty());
    EXPECT_EQ(plate->AddInverseLink(box.Get()), 1);
    EXPECT_EQ(plate->AddInverseLink(crate.Get()), 1);
    EXPECT_EQ(plate->AddInverseLink(box.Get()), 0) << "it is there already";
    EXPECT_EQ(plate->AddInverseLink(nullptr), 0);
    EXPECT_THAT(Pointing(plate), ElementsAre(box.Get(), crate.Get()));
    EXPECT_THAT(Pointing(box), IsEmpty());
    EXPECT_EQ(plate->RemoveInverseLink(box.Get()), 1);
    EXPECT_EQ(plate->RemoveInverseLink(box.Get()), 0);
    EXPECT_EQ(plate->RemoveInverseLink(nullptr), 0);
    EXPECT_EQ(crate->RemoveInverseLink(plate.Get()), 0);
    EXPECT_THAT(Pointing(plate), ElementsAre(crate.Get()));
}

TEST(ZORImplementationAdapter, MayPointToItself)
{
    const Part part = MakePart();
    EXPECT_EQ(part->AddInverseLink(part.Get()), 1);
    EXPECT_THAT(Pointing(part), ElementsAre(part.Get()));
}

TEST(ZORImplementationAdapter, ALinkKeepsNobodyAliveAndGoesWithEitherSide)
{
    Part plate = MakePart();
    Part box = MakePart();
    const Part crate = MakePart();
    plate->AddInverseLink(box.Get());
    plate->AddInverseLink(crate.Get());
    box->AddInverseLink(plate.Get());
    box = nullptr;
    EXPECT_THAT(Pointing(plate), ElementsAre(crate.Get()));
    plate = nullptr;
    EXPECT_EQ(crate->AddInverseLink(MakePart().Get()), 1);
    EXPECT_THAT(Pointing(crate), IsEmpty());
}

TEST(ZORImplementationAdapter, AnObjectInItsDestructorIsNoLongerAmongThem)
{
    class Box : public ZORImplementationAdapter
    {
    public:
        explicit Box(const Part& iPlate) : _Plate(iPlate) { _Plate->AddInverseLink(this); }
        ~Box() override { EXPECT_THAT(Pointing(_Plate), IsEmpty()); }

    private:
        Part _Plate;
    };
    const Part plate = MakePart();
    const Part box = Part::Adopt(new Box(plate));
    EXPECT_THAT(Pointing(plate), ElementsAre(box.Get()));
}

TEST(ZORImplementationAdapter, LinksOfACopyAreItsOwn)
{
    const Part plate = MakePart();
    const Part box = MakePart();
    plate->SetName("plate");
    plate->AddInverseLink(box.Get());
    const ZORUnicodeString identifier = plate->GetIdentifier();
    const Part copy = Part::Adopt(new ZORImplementationAdapter(*plate));
    EXPECT_EQ(copy->GetName(), "plate");
    EXPECT_NE(copy->GetIdentifier(), identifier);
    EXPECT_THAT(Pointing(copy), IsEmpty());
    *box = *plate;
    EXPECT_EQ(box->GetName(), "plate");
    *plate = *plate;
    EXPECT_EQ(plate->GetName(), "plate");
    EXPECT_THAT(Pointing(plate), ElementsAre(box.Get()));
}

TEST(ZORImplementationAdapter, LinksFollowAPlainListOverRandomSteps)
{
    std::mt19937 random(20240229);
    std::vector<Part> parts(12);
    std::vector<std::pair<std::size_t, std::size_t>> model; // (to, from) in the order made
    for (Part& part : parts)
        part = MakePart();
    for (int step = 0; step < 5000; ++step) {
        const std::size_t to = random() % parts.size();
        const std::size_t from = random() % parts.size();
        const std::pair link(to, from);
        const auto found = std::find(model.begin(), model.end(), link);
        switch (random() % 8) {
        case 0: {
            parts[to] = MakePart();
            const auto concerns = [to](const auto& each) {
                return each.first == to || each.second == to;
            };
            model.erase(std::remove_if(model.begin(), model.end(), concerns), model.end());
            break;
        }
        case 1:
        case 2:
            EXPECT_EQ(parts[to]->RemoveInverseLink(parts[from].Get()), found != model.end());
            if (found != model.end())
                model.erase(found);
            break;
        default:
            EXPECT_EQ(parts[to]->AddInverseLink(parts[from].Get()), found == model.end());
            if (found == model.end())
                model.push_back(link);
        }
        std::vector<const ZORBaseUnknown*> expected;
        for (const auto& each : model)
            if (each.first == to)
                expected.push_back(parts[each.second].Get());
        ASSERT_EQ(Pointing(parts[to]), expected) << "step " << step;
    }
}

TEST(ZORImplementationAdapter, ObjectsOfALinkMayGoInAnotherThread)
{
    for (int round = 0; round < 100; ++round) {
        const Part plate = MakePart();
        std::vector<Part> boxes(20);
        for (Part& box : boxes) {
            box = MakePart();
            plate->AddInverseLink(box.Get());
        }
        std::thread going([&boxes] { boxes.clear(); });
        for (int i = 0; i < 20; ++i)
            for (const ZORBaseUnknown_var& each : plate->GetInverseLinks())
                EXPECT_EQ(each->IsAKindOf("ZORImplementationAdapter"), 1);
        going.join();
        EXPECT_THAT(plate->GetInverseLinks(), IsEmpty());
    }
}

TEST(ZORImplementationAdapter, AnswersNotSupportedWhereADocumentIsAskedFor)
{
    const Part part = MakePart();
    ZORBaseUnknown_var document(part);
    EXPECT_EQ(part->GetDocument(document), ZORStoreNotSupported);
    EXPECT_FALSE(document);
    ZORUnicodeString text("before");
    EXPECT_EQ(part->GetLocatorType(text), ZORStoreNotSupported);
    EXPECT_EQ(text, "");
    text = "before";
    EXPECT_EQ(part->GetStoredName(text), ZORStoreNotSupported);
    EXPECT_EQ(text, "");
    ZORListValZORUnicodeString list;
    list.Append("before");
    EXPECT_EQ(part->GetAdditionalInfos(list), ZORStoreNotSupported);
    EXPECT_EQ(list.Size(), 0);
    list.Append("before");
    EXPECT_EQ(part->ListSupportedAreasIdentifier(list), ZORStoreNotSupported);
    EXPECT_EQ(list.Size(), 0);
    int filled = 1;
    EXPECT_EQ(part->IsAFilledArea("area", filled), ZORStoreNotSupported);
    EXPECT_EQ(filled, 0);
    EXPECT_EQ(part->FillArea("area"), ZORStoreNotSupported);
    EXPECT_EQ(part->ExternalBindPointedObjects(), ZORStoreNotSupported);
}
