#include "../Peers.h"

#ifdef BENCH_WITH_SIMGEAR
#include <simgear/props/props.hxx>

#include "../InTurn.h"
#endif

namespace bench {

#ifdef BENCH_WITH_SIMGEAR

namespace {

// A tree with one property that is tied to a value.
template <class Value>
SGPropertyNode_ptr TiedTree(const SGRawValue<Value>& value) {
  SGPropertyNode_ptr root = new SGPropertyNode;
  root->getNode("bench/group/value", true)->tie(value, false);
  return root;
}

template <class Value>
Loop Read(const SGRawValue<Value>& value) {
  return [tree = TiedTree(value)](benchmark::State& state) {
    const SGPropertyNode* node = tree->getNode("bench/group/value");
    for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(node->getValue<Value>());
  };
}

}  // namespace

template <class Value>
Loop SimGearRead(Value (*getter)()) {
  return Read<Value>(SGRawValueFunctions<Value>(getter));
}

template <class Value>
Loop SimGearReadVariable(Value* variable) {
  return Read<Value>(SGRawValuePointer<Value>(variable));
}

template <class Value>
Loop SimGearWrite(Value (*getter)(), void (*setter)(Value), Value value) {
  return
      [tree = TiedTree<Value>(SGRawValueFunctions<Value>(getter, setter)), value](benchmark::State& state) {
        SGPropertyNode* node = tree->getNode("bench/group/value");
        for ([[maybe_unused]] auto iteration : state) node->setValue(value);
      };
}

Loop SimGearFind(const std::vector<std::string>& names, const std::vector<std::string>& asked) {
  SGPropertyNode_ptr tree = new SGPropertyNode;
  for (const std::string& path : names) tree->getNode(path, true);
  return [tree, &asked](benchmark::State& state) {
    AskInTurn(state, asked, [&](const std::string& path) { return tree->getNode(path.c_str(), false); });
  };
}

#else

template <class Value>
Loop SimGearRead(Value (* /*getter*/)()) {
  return {};
}

template <class Value>
Loop SimGearReadVariable(Value* /*variable*/) {
  return {};
}

template <class Value>
Loop SimGearWrite(Value (* /*getter*/)(), void (* /*setter*/)(Value), Value /*value*/) {
  return {};
}

Loop SimGearFind(const std::vector<std::string>& /*names*/, const std::vector<std::string>& /*asked*/) {
  return {};
}

#endif

template Loop SimGearRead(int (*)());
template Loop SimGearRead(float (*)());
template Loop SimGearRead(double (*)());
template Loop SimGearReadVariable(int*);
template Loop SimGearReadVariable(float*);
template Loop SimGearReadVariable(double*);
template Loop SimGearWrite(int (*)(), void (*)(int), int);
template Loop SimGearWrite(float (*)(), void (*)(float), float);
template Loop SimGearWrite(double (*)(), void (*)(double), double);

}  // namespace bench
