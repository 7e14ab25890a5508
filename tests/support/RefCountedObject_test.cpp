#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <cstring>
#include <new>

namespace {

class Probe : public CRefCountedObject {
 public:
  explicit Probe(int* destroyed) : m_destroyed(destroyed) {}
  ~Probe() override { ++*m_destroyed; }

 private:
  int* m_destroyed;
};

// Stores the count where the object keeps it, behind the pointer to its virtual table: nobody can
// wait for two thousand million calls.
void SetCount(CRefCountedObject* object, int count) {
  std::memcpy(reinterpret_cast<char*>(object) + sizeof(void*), &count, sizeof count);
  ASSERT_EQ(count, object->GetRefCount());
}

TEST(RefCountedObject, A_new_object_holds_one_reference) {
  int destroyed = 0;
  Probe* probe = new Probe(&destroyed);
  EXPECT_EQ(1, probe->GetRefCount());
  probe->RealRelease();
}

TEST(RefCountedObject, AddRef_returns_the_count_after_the_call) {
  int destroyed = 0;
  Probe* probe = new Probe(&destroyed);
  EXPECT_EQ(2, probe->AddRef());
  EXPECT_EQ(3, probe->AddRef());
  EXPECT_EQ(3, probe->GetRefCount());
  while (probe->RealRelease() != 0) {
  }
}

TEST(RefCountedObject, RealRelease_returns_the_count_after_the_call) {
  int destroyed = 0;
  Probe* probe = new Probe(&destroyed);
  probe->AddRef();
  EXPECT_EQ(1, probe->RealRelease());
  EXPECT_EQ(1, probe->GetRefCount());
  EXPECT_EQ(0, destroyed);
  EXPECT_EQ(0, probe->RealRelease());
}

TEST(RefCountedObject, The_last_release_runs_the_destructor_of_the_derived_class) {
  int destroyed = 0;
  CRefCountedObject* object = new Probe(&destroyed);
  object->RealRelease();
  EXPECT_EQ(1, destroyed);
}

TEST(RefCountedObject, A_count_that_has_reached_its_limit_stays_there) {
  int destroyed = 0;
  Probe* probe = new Probe(&destroyed);
  SetCount(probe, INT_MAX - 1);
  EXPECT_EQ(INT_MAX, probe->AddRef());
  EXPECT_EQ(INT_MAX, probe->AddRef());
  EXPECT_EQ(INT_MAX, probe->RealRelease());
  EXPECT_EQ(INT_MAX, probe->GetRefCount());
  EXPECT_EQ(0, destroyed);
  SetCount(probe, 1);
  probe->RealRelease();
}

// The test binary aborts when the forms of allocation are mixed.
TEST(RefCountedObject, Memory_goes_back_to_the_array_form) {
  int destroyed = 0;
  Probe* probe = ::new (::operator new[](sizeof(Probe))) Probe(&destroyed);
  probe->RealRelease();
  EXPECT_EQ(1, destroyed);
}

TEST(RefCountedObject, Memory_is_taken_in_the_array_form) {
  void* memory = CRefCountedObject::operator new(sizeof(Probe));
  ASSERT_NE(nullptr, memory);
  ::operator delete[](memory);
}

TEST(RefCountedObject, Deleting_null_does_nothing) {
  void* volatile none = nullptr;
  CRefCountedObject::operator delete(none);
}

TEST(RefCountedObject, Release_drops_one_reference_and_nulls_the_pointer) {
  int destroyed = 0;
  Probe* probe = new Probe(&destroyed);
  probe->AddRef();
  Probe* other = probe;
  Release(probe);
  EXPECT_EQ(nullptr, probe);
  EXPECT_EQ(1, other->GetRefCount());
  Release(other);
  EXPECT_EQ(nullptr, other);
  EXPECT_EQ(1, destroyed);
}

TEST(RefCountedObject, Release_leaves_a_null_pointer_alone) {
  Probe* probe = nullptr;
  Release(probe);
  EXPECT_EQ(nullptr, probe);
  IXMLDOMNode* node = nullptr;
  Release(node);
  EXPECT_EQ(nullptr, node);
}

// Whatever is left alive fails the case.
TEST(RefCountedObject, Release_takes_every_kind_of_object) {
  IXMLDOMNode* node = new IXMLDOMNode(nullptr, "a", nullptr, NODE_ELEMENT);
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  IXMLDOMNodeList* list = new IXMLDOMNodeList;
  IXMLDOMNamedNodeMap* map = new IXMLDOMNamedNodeMap;
  IXMLDOMParseError* error = new IXMLDOMParseError;
  Release(node);
  Release(document);
  Release(list);
  Release(map);
  Release(error);
  EXPECT_EQ(nullptr, node);
  EXPECT_EQ(nullptr, document);
  EXPECT_EQ(nullptr, list);
  EXPECT_EQ(nullptr, map);
  EXPECT_EQ(nullptr, error);
}

}  // namespace
