#ifndef MIRN_TESTS_SUPPORT_ID_VECTORS_H
#define MIRN_TESTS_SUPPORT_ID_VECTORS_H

/// Identity texts of library objects and the ids that they must have on every platform: clients keep ids.
/// Computed apart from this code, as the folded FNV-1a hash of the text in UTF-16, low byte first.
struct IdVector {
  const char* name;
  const char* uniqueId;  ///< UTF-8.
  const wchar_t* id;
};

inline constexpr IdVector kIdVectors[] = {
    {"Empty", "", L"14695981038468906945"},
    {"OneCharacter", "a", L"620337896571737059"},
    {"Controller", "controller-0", L"4645455526652599684"},
    {"BlanksAndPunctuation", "S/N: 42 #7 (left)", L"8442153686521764617"},
    {"FieldOf23Characters", "0123456789ABCDEFGHIJKLM", L"9146831670257919972"},
    {"LeadingBlank", " controller-0", L"2678047677298086992"},
    {"OtherCase", "Controller-0", L"1120670924667559248"},
    {"TwoByteCode", "L\303\274fter", L"15619078155520633956"},
    {"ThreeByteCode", "\342\202\2541", L"16173274814407369377"},
    {"AboveThePlane", "\360\237\222\276", L"17643434346947694061"},
    {"HighUnit", "\357\277\277\304\200", L"10992416313762700877"},
};

#endif
