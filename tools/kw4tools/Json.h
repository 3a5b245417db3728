#pragma once

#include <string>
#include <string_view>

// A JSON value, for results that other programs read.
//
//     Json found = Json::Object();
//     found.Add("name", "plate").Add("codes", Json::Array().Add(1).Add(2));
//     found.Text() // {"name":"plate","codes":[1,2]}
//
// JSON has no strings but those of well-formed UTF-8; a text that is none is the array of the
// numbers of its bytes instead, so that nothing is lost and no text can be taken for another.
class Json
{
public:
    Json(std::nullptr_t) : _Text("null") {}
    Json(bool iSo) : _Text(iSo ? "true" : "false") {}
    Json(int iNumber) : _Text(std::to_string(iNumber)) {}
    Json(std::size_t iNumber) : _Text(std::to_string(iNumber)) {}
    Json(std::string_view iText);
    Json(const std::string& iText) : Json(std::string_view(iText)) {}
    Json(const char* iText) : Json(std::string_view(iText)) {}

    // An array, and an object, to add to.
    static Json Array() { return {'[', ']'}; }
    static Json Object() { return {'{', '}'}; }
    Json& Add(const Json& iElement);
    Json& Add(const char* iName, const Json& iMember);

    // On one line, without an end of line.
    std::string Text() const { return _Text + _End; }

    // The array of the elements of a list, or of what the function makes of each element of a list.
    template <class List, class Element>
    static Json ArrayOf(const List& iList, Element iElement)
    {
        Json array = Array();
        for (const auto& each : iList)
            array.Add(iElement(each));
        return array;
    }
    template <class List>
    static Json ArrayOf(const List& iList)
    {
        return ArrayOf(iList, [](const auto& each) { return Json(each); });
    }

private:
    Json(char iBegin, char iEnd) : _Text(1, iBegin), _End(1, iEnd) {}
    void Separate();

    std::string _Text;
    std::string _End; // of what can be added to
};
