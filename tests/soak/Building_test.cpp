#include "plain/PlainBuilding.h"

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "plain/PlainEditing.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

const char* const kNames[] = {"a", "b", "k", "m"};
const char* const kValues[] = {"1", "", "v&amp;", nullptr};

/// One call that builds.
struct BuildingCall {
  int kind;
  int node;
  int other;
  const char* name;
  const char* value;
  int length;

  BuildingCall(Random& random, const Forest& forest)
      : kind(random.Below(9)),
        node(random.OneIn(3) ? random.Below(forest.Count()) : random.Below(4)),
        other(random.Below(forest.Count())),
        name(random.OneOf(kNames)),
        value(random.OneOf(kValues)),
        length(random.Below(5) - 1) {}

  std::string Run(Forest& forest, bool library) const;

 private:
  /// Adds a detached node that has a reference to give away, if the other one is such a node.
  int AddDetached(Forest& forest, bool library) const;
};

int BuildingCall::AddDetached(Forest& forest, bool library) const {
  IXMLDOMNode* child = forest.At(other);
  const bool isDetached = other >= 2 && child->m_pParent == nullptr &&
                          child->m_pNextSibling == nullptr && child->m_pFirstChild == nullptr &&
                          child->m_pFirstAttribute == nullptr && forest.LinksTo(child) == 0;
  if (!isDetached || other == node) return -1;
  child->AddRef();
  return library ? forest.At(node)->AddChild(child) : plain::AddChild(forest.At(node), child);
}

std::string BuildingCall::Run(Forest& forest, bool library) const {
  IXMLDOMNode* target = forest.At(node);
  IXMLDOMNode* made = nullptr;
  int result = 0;
  switch (kind) {
    case 0:
    case 1:
      made = library ? target->AddChild(name, value) : plain::AddChild(target, name, value);
      break;
    case 2:
      made = library ? target->AddSibling(name, value) : plain::AddSibling(target, name, value);
      break;
    case 3:
      result = library ? target->AddTextChild(value) : plain::AddTextChild(target, value);
      break;
    case 4:
      result =
          library ? target->AddAttribute(name, value) : plain::AddAttribute(target, name, value);
      break;
    case 5:
      result =
          library ? target->SetAttribute(name, value) : plain::SetAttribute(target, name, value);
      break;
    case 6:
      library ? target->AppendValue(name, length) : plain::AppendValue(target, name, length);
      break;
    case 7:
      library ? target->SetValue(value) : plain::SetValue(target, value);
      break;
    default:
      result = AddDetached(forest, library);
  }
  if (made != nullptr) result = made->RealRelease();
  return "call " + std::to_string(kind) + " on #" + std::to_string(node) + " gives " +
         std::to_string(result) + "\n";
}

/// Calls that build, with links, owners and parents changed by hand and nodes taken out in between.
std::string BuildRandomly(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 2 + random.Below(6);
  shape.changesByHand = random.Below(3);
  shape.sharesNodes = false;
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  std::string calls;
  for (int count = 4 + random.Below(12); count > 0; --count) {
    if (random.OneIn(4)) {
      Random again = random;
      const bool cutsMiddle = one.ChangeByHand(random, shape);
      two.ChangeByHand(again, shape);
      // Nothing shows such a cut in constant time; the release of any node makes the library look
      // at chains anew, as it asks of applications that cut them.
      if (cutsMiddle) (new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT))->RealRelease();
      calls += "change by hand\n";
    }
    const BuildingCall call(random, one);
    const auto run = [&](Forest& forest, bool library) {
      const std::string seen =
          observer.Observe([&](std::string& results) { results += call.Run(forest, library); });
      return seen + forest.State();
    };
    const std::string difference = Difference(run(one, true), run(two, false));
    if (!difference.empty()) return calls + difference;
    calls += "call " + std::to_string(call.kind) + " on #" + std::to_string(call.node) + "\n";
  }
  return "";
}

TEST(SoakBuilding, Nodes_go_to_the_end_of_their_chain_as_it_stands) {
  RunCases("building", BuildRandomly);
}

}  // namespace
