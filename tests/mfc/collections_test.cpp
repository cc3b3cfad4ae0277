#include <gtest/gtest.h>

#include <vector>

#include <afxtempl.h>
#include <afxwin.h>

namespace {

template <class Action>
bool raisesInvalidArgument(Action action) {
    try {
        action();
    } catch (CInvalidArgException* exception) {
        exception->Delete();
        return true;
    }
    return false;
}

/// An element that counts how many of it live.
struct Counted {
    Counted() { ++living; }
    Counted(int number) : value(number) { ++living; }
    Counted(const Counted& other) : value(other.value) { ++living; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --living; }

    int value = -1;
    static inline int living = 0;
};

std::vector<int> valuesOf(const CArray<Counted>& array) {
    std::vector<int> values;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        values.push_back(array[i].value);
    return values;
}

using Values = std::vector<int>;

TEST(CArray, GrowsShrinksAndKeepsCount) {
    {
        CArray<Counted> array;
        EXPECT_TRUE(array.IsEmpty());
        EXPECT_EQ(array.GetUpperBound(), -1);
        EXPECT_EQ(array.GetData(), nullptr);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(array.Add(i), i);
        EXPECT_EQ(valuesOf(array), (Values{0, 1, 2, 3, 4}));

        array.SetAtGrow(6, 6);
        EXPECT_EQ(valuesOf(array), (Values{0, 1, 2, 3, 4, -1, 6}));
        array.InsertAt(1, 9, 2);
        EXPECT_EQ(valuesOf(array), (Values{0, 9, 9, 1, 2, 3, 4, -1, 6}));
        array.RemoveAt(0, 3);
        EXPECT_EQ(valuesOf(array), (Values{1, 2, 3, 4, -1, 6}));
        array.InsertAt(7, 8);
        EXPECT_EQ(valuesOf(array), (Values{1, 2, 3, 4, -1, 6, -1, 8})) << "beyond the end";
        array.SetSize(2);
        EXPECT_EQ(Counted::living, 2);
        array.SetSize(3, 16);
        array.FreeExtra();
        EXPECT_EQ(valuesOf(array), (Values{1, 2, -1}));
        array.RemoveAt(3, 0);
        EXPECT_EQ(array.GetCount(), 3);
        array.RemoveAll();
        EXPECT_EQ(Counted::living, 0);
        array.SetSize(4);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(CArray, TakesItsOwnElements) {
    CArray<CString, const CString&> array;
    array.Add(L"a");
    for (int i = 0; i < 40; ++i)
        array.Add(array[0]);
    array.SetAtGrow(100, array[0]);
    array.InsertAt(0, array[0], 50);
    EXPECT_EQ(array.GetSize(), 151);
    EXPECT_STREQ(array[150], L"a");
    array.SetAt(1, L"b");
    EXPECT_STREQ(array[0], L"a");
    EXPECT_EQ(array.Append(array), 151);
    EXPECT_STREQ(array[152], L"b");
    array.Copy(array);
    EXPECT_EQ(array.GetSize(), 302);
}

TEST(CArray, CopiesOnRequest) {
    CArray<double, double> from;
    from.Add(1.5);
    from.Add(-2);
    CArray<double, double> to;
    to.Add(7);
    EXPECT_EQ(to.Append(from), 1);
    EXPECT_EQ(to[2], -2);
    to.Copy(from);
    EXPECT_EQ(to.GetSize(), 2);
    to.InsertAt(1, &from);
    EXPECT_EQ(std::vector<double>(to.GetData(), to.GetData() + 4),
              (std::vector<double>{1.5, 1.5, -2, -2}));
    static_assert(!std::is_copy_constructible_v<CArray<double, double>>);
    static_assert(!std::is_copy_assignable_v<CArray<double, double>>);
}

TEST(CArray, RefusesIndicesOutside) {
    CStringArray array;
    array.Add(L"x");
    const CStringArray& reading = array;
    EXPECT_TRUE(raisesInvalidArgument([&] { (void)array[1]; }));
    EXPECT_TRUE(raisesInvalidArgument([&] { (void)reading.GetAt(-1); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.SetAt(1, L""); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.SetAtGrow(-1, L""); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.InsertAt(0, L"", 0); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.RemoveAt(0, 2); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.RemoveAt(2, 0); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { array.SetSize(-1); }));
    EXPECT_EQ(array.GetSize(), 1);
}

TEST(CList, LinksBothWays) {
    CList<int, int> list;
    list.AddTail(2);
    list.AddHead(1);
    const POSITION three = list.AddTail(3);
    list.InsertBefore(three, 25);
    list.InsertAfter(three, 4);
    list.AddTail(&list);
    EXPECT_EQ(list.GetCount(), 10);

    std::vector<int> forward;
    for (POSITION at = list.GetHeadPosition(); at != nullptr;)
        forward.push_back(list.GetNext(at));
    EXPECT_EQ(forward, (Values{1, 2, 25, 3, 4, 1, 2, 25, 3, 4}));
    std::vector<int> backward;
    for (POSITION at = list.GetTailPosition(); at != nullptr;)
        backward.push_back(list.GetPrev(at));
    EXPECT_EQ(backward, std::vector<int>(forward.rbegin(), forward.rend()));

    EXPECT_EQ(list.Find(25), list.FindIndex(2));
    EXPECT_EQ(list.Find(25, list.FindIndex(2)), list.FindIndex(7));
    EXPECT_EQ(list.Find(99), nullptr);
    EXPECT_EQ(list.FindIndex(10), nullptr);
    list.RemoveAt(three);
    EXPECT_EQ(list.RemoveHead(), 1);
    EXPECT_EQ(list.RemoveTail(), 4);
    EXPECT_EQ(list.GetHead(), 2);
    EXPECT_EQ(list.GetTail(), 3);
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_TRUE(raisesInvalidArgument([&] { (void)list.GetHead(); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { (void)list.RemoveHead(); }));
    EXPECT_TRUE(raisesInvalidArgument([&] { (void)list.GetAt(nullptr); }));
}

TEST(CMap, FindsByKey) {
    CMapStringToString map;
    map.SetAt(L"wall", L"墙");
    map[L"beam"] = L"梁";
    map.SetAt(L"wall", L"壁");
    EXPECT_EQ(map.GetCount(), 2);
    CString value = L"untouched";
    EXPECT_FALSE(map.Lookup(L"Wall", value));
    EXPECT_STREQ(value, L"untouched");
    EXPECT_TRUE(map.Lookup(CString("wall"), value));
    EXPECT_STREQ(value, L"壁");
    EXPECT_TRUE(map.RemoveKey(L"wall"));
    EXPECT_FALSE(map.RemoveKey(L"wall"));

    CMap<int, int, CString, LPCTSTR> numbers;
    numbers.InitHashTable(101);
    for (int i = 1; i <= 20; ++i)
        numbers.SetAt(i, L"x");
    int sum = 0, visits = 0;
    for (POSITION at = numbers.GetStartPosition(); at != nullptr; ++visits) {
        int key = 0;
        numbers.GetNextAssoc(at, key, value);
        sum += key;
    }
    EXPECT_EQ(visits, 20);
    EXPECT_EQ(sum, 210);
    numbers.RemoveAll();
    EXPECT_EQ(numbers.GetStartPosition(), nullptr);
}

} // namespace
