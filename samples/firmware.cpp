#include "samples/firmware.h"

#include <algorithm>
#include <stdexcept>

#include "samples/layout.h"

namespace scan695::samples {

using namespace builder;

namespace {

constexpr uint32_t LABEL_TYPE = 0x0F;
constexpr uint32_t GLOBAL_ATTRIBUTE = 19;

// The compiler's half: a module's debug blocks, under indexes that run on through the program.
class Debug {
  public:
    Debug(const Program& program, const Layout& layout) : program_(program), layout_(layout) {}

    Bytes Part() {
        Bytes part = Bb10(program_.name, {}) + program_.more_debug;
        for (const Module& module : program_.modules) {
            if (module.kind == Module::COMPILED) part += Compiled(module);
            if (module.kind == Module::ASSEMBLED) part += Assembled(module);
        }
        return part;
    }

  private:
    Bytes Compiled(const Module& module) {
        const Bytes types = Bb1(module.name, Types(module));
        const Bytes scopes = Bb3(module.name, Scopes(module));
        const Bytes lines = Lines(module);
        return types + scopes + lines + Bb10(module.name, Sections(module, {}));
    }

    Bytes Assembled(const Module& module) {
        Bytes body;
        for (const AsmLabel& label : module.labels) {
            const uint32_t address =
                layout_.StepAddress(FindFunction(module, label.function), label.step);
            const uint32_t index = next_();
            body += Nn(index, label.name) + Atn(index, LABEL_TYPE, GLOBAL_ATTRIBUTE) +
                    label.numbers + Asn(index, address);
        }
        for (const Function& function : module.functions) {
            for (size_t i = 0; i < function.steps.size(); ++i) {
                body += AsmLine(next_(), function.steps[i].line,
                                layout_.StepAddress(function, static_cast<int>(i)));
            }
        }
        return Bb10(module.name, Sections(module, body));
    }

    static const Function& FindFunction(const Module& module, const std::string& name) {
        for (const Function& function : module.functions) {
            if (function.name == name) return function;
        }
        throw std::runtime_error("no such function: " + name);
    }

    // A BB11 block for each segment that the module shares; the first one, the code's, holds
    // `body`.
    Bytes Sections(const Module& module, const Bytes& body) const {
        Bytes sections;
        for (const samples::Segment& segment : program_.segments) {
            const uint32_t size = layout_.ModuleShare(module.name, segment.name);
            if (size == 0) continue;
            const bool is_code = segment.name == module.code_segment;
            const uint32_t kind = is_code ? 0 : segment.memory == Memory::CONSTANTS ? 5 : 2;
            sections += Bb11({.name = segment.name,
                              .kind = kind,
                              .segment = layout_.SegmentNumber(segment.name),
                              .body = is_code ? body : Bytes{},
                              .size = size});
        }
        return sections;
    }

    Bytes Types(const Module& module) {
        Bytes types;
        uint32_t number = 0x100;
        for (const auto& [name, definition] : module.types) {
            types += NamedType(next_(), name, number++, definition);
        }
        return types;
    }

    Bytes Scopes(const Module& module) {
        Bytes scopes;
        if (module.compiler_record) scopes += Misc(next_(), "", 64, 50, {408, 1, 4});
        for (const Function& function : module.functions) scopes += Scope(function);
        for (const Variable& variable : module.variables) {
            if (variable.in_function) continue;
            const uint32_t address = layout_.Address(variable.name);
            scopes += variable.is_static
                          ? StaticVariable(next_(), variable.name, variable.type, address)
                          : GlobalVariable(next_(), variable.name, variable.type, address);
        }
        return scopes;
    }

    Bytes Scope(const Function& function) {
        FunctionBlock block = {.name = function.name,
                               .stack = function.stack,
                               .type = function.type,
                               .begin = layout_.StepAddress(function, 0),
                               .end = layout_.StepAddress(function, Home::END) - 1};
        for (const Inner& inner : function.inner) {
            const uint32_t begin = layout_.StepAddress(function, inner.from);
            const uint32_t end = layout_.StepAddress(function, inner.to) - 1;
            block.body += Bb6({.stack = inner.stack,
                               .begin = begin,
                               .end = end,
                               .body = Locals(function, inner.locals)});
        }
        block.body += Locals(function, function.locals);
        return function.is_static ? Bb6(block) : Bb4(block);
    }

    Bytes Locals(const Function& function, const std::vector<Local>& locals) {
        Bytes records;
        for (const Local& local : locals) {
            const uint32_t index = next_();
            records += Head(local, index);
            // Linkers write the marks with falling addresses.
            for (auto home = local.homes.rbegin(); home != local.homes.rend(); ++home) {
                if (home->from != Home::THROUGHOUT) records += Marks(function, *home, index);
            }
            if (local.parameter) records += ParameterMark(index);
        }
        return records;
    }

    Bytes Head(const Local& local, uint32_t index) const {
        if (local.homes.empty()) {
            return StaticVariable(index, local.name, local.type, layout_.Address(local.variable));
        }
        const Home& first = local.homes.front();
        if (first.place == STACK) return AutoVariable(index, local.name, local.type, first.value);
        if (program_.target.living_registers) {
            return LivingRegister(index, local.name, local.type, first.value);
        }
        return LockedRegister(index, local.name, local.type, first.value);
    }

    Bytes Marks(const Function& function, const Home& home, uint32_t index) const {
        const uint32_t begin = layout_.StepAddress(function, home.from);
        if (home.to == Home::OPEN) return LifetimeMark(index, begin, int{home.place}, home.value);
        return Lifetime(index, begin, layout_.StepAddress(function, home.to), home.place,
                        home.value);
    }

    Bytes Lines(const Module& module) {
        Bytes body;
        for (const std::string& header : module.headers) body += Bb5(header, {});
        const uint32_t index = next_();
        body += Nn(index, "");
        for (const Function& function : module.functions) {
            for (size_t i = 0; i < function.steps.size(); ++i) {
                const Step& step = function.steps[i];
                const uint32_t address = layout_.StepAddress(function, static_cast<int>(i));
                body += Line(index, step.line, address);
                if (step.stack >= 0) body += StackPoint(index, address, step.stack);
            }
        }
        return Bb5(module.source, body);
    }

    const Program& program_;
    const Layout& layout_;
    Indexes next_;
};

// Every global function and variable under its linker name, with an underscore in front.
Bytes Externals(const Program& program, const Layout& layout) {
    Indexes next(32);
    Bytes part;
    const Num code = program.target.code_memory_id;
    for (const Module& module : program.modules) {
        for (const Function& function : module.functions) {
            if (function.is_static || module.kind == Module::ASSEMBLED) continue;
            part += PublicSymbol(next(), "_" + function.name, LABEL_TYPE, GLOBAL_ATTRIBUTE,
                                 layout.Address(function.name), code);
        }
        for (const Variable& variable : module.variables) {
            if (variable.is_static || variable.in_function) continue;
            part += PublicSymbol(next(), "_" + variable.name, 0, GLOBAL_ATTRIBUTE,
                                 layout.Address(variable.name));
        }
    }
    for (const PublicLabel& label : program.labels) {
        part += PublicSymbol(next(), label.name, label.type, label.attribute,
                             layout.Address(label.function), code);
    }
    return part + program.more_public;
}

}  // namespace

uint32_t Module::Type(const std::string& type_name, const TypeDef& definition) {
    types.emplace_back(type_name, definition);
    return static_cast<uint32_t>(0x100 + types.size() - 1);
}

Bytes Link(const Program& program) {
    const Layout layout(program);
    return Build({.processor = program.target.processor,
                  .module = program.name,
                  .ad_extension = AdExtension(program.ad_attributes),
                  .environment = Environment(program.environment_attributes),
                  .segments = layout.SegmentPart(),
                  .external = Externals(program, layout),
                  .debug = Debug(program, layout).Part(),
                  .data = layout.DataPart(),
                  .trailer = program.trailer});
}

}  // namespace scan695::samples
