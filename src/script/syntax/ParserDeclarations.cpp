#include "script/syntax/Parser.h"

#include <algorithm>
#include <utility>

namespace zan::script {

namespace {

/// More parameters or dimensions than this are a mistake, and a danger to fixed-width fields of the bytecode.
constexpr std::size_t MostItems = 60;
constexpr std::size_t MostParameters = 255;

bool isAccessor(ProcedureKind kind) noexcept
{
    return kind != ProcedureKind::Sub && kind != ProcedureKind::Function;
}

} // namespace

/// Declarations that stand outside procedures only. False when there is none here.
bool Parser::declarationStatement()
{
    switch (token().kind) {
    case TokenKind::Sub:
    case TokenKind::Function:
        m_tree.procedures.push_back(procedure(true, false, false));
        return true;
    case TokenKind::Class:
        classDeclaration();
        return true;
    case TokenKind::Public:
    case TokenKind::Private:
        break;
    default:
        if (!startsProperty())
            return false;
        advance();
        fail(SyntaxError::OutsideClass);
    }
    advance();
    if (at(TokenKind::Sub) || at(TokenKind::Function)) {
        m_tree.procedures.push_back(procedure(true, false, false));
    } else if (startsProperty()) {
        advance();
        fail(SyntaxError::OutsideClass);
    } else if (at(TokenKind::Const)) {
        constStatement(m_tree.statements, nullptr, true);
    } else {
        --m_place; // the word takes the place of Dim
        dimStatement(m_tree.statements);
    }
    return true;
}

bool Parser::startsProperty() const
{
    return atWord("property") &&
           (peek().kind == TokenKind::Get || peek().kind == TokenKind::Let || peek().kind == TokenKind::Set);
}

Declarator Parser::declarator()
{
    Declarator result;
    result.position = token().position;
    result.name = identifier();
    if (!accept(TokenKind::OpenParenthesis))
        return result;
    result.isArray = true;
    if (accept(TokenKind::CloseParenthesis))
        return result;
    do {
        const values::Variant& bound = token().value;
        if (!at(TokenKind::Number) || bound.is(values::Kind::Double))
            fail(SyntaxError::ExpectedIntegerConstant);
        result.upperBounds.push_back(bound.is(values::Kind::Integer) ? bound.integer() : bound.longInteger());
        if (result.upperBounds.size() > MostItems)
            fail(SyntaxError::OutOfMemory);
        advance();
    } while (accept(TokenKind::Comma));
    expect(TokenKind::CloseParenthesis, SyntaxError::ExpectedCloseParenthesis);
    return result;
}

/// Puts a name into the scope. Only two procedures may share one, and only outside classes: the last one counts.
void Parser::declare(values::Name name, Position position, Declared kind)
{
    const auto [entry, isNew] = m_names->emplace(name.folded(), kind);
    if (!isNew && !(kind == Declared::Procedure && entry->second == Declared::Procedure && !m_class))
        fail(SyntaxError::NameRedefined, position);
}

ProcedureNode* Parser::procedure(bool isPublic, bool isDefault, bool inClass)
{
    ProcedureNode& node = m_tree.procedureNodes.emplace_back();
    node.kind = at(TokenKind::Sub) ? ProcedureKind::Sub : ProcedureKind::Function;
    node.isPublic = isPublic;
    node.isDefault = isDefault;
    advance();
    node.position = token().position;
    node.name = identifier();
    declare(node.name, node.position, Declared::Procedure);
    Names names;
    Names* const outer = std::exchange(m_names, &names);
    parameterList(node);
    if (inClass && !node.parameters.empty()) {
        const QString& name = node.name.folded().text();
        if (name == QLatin1String("class_initialize") || name == QLatin1String("class_terminate"))
            fail(SyntaxError::ClassEventArguments);
    }
    procedureBody(node);
    m_names = outer;
    return &node;
}

void Parser::parameterList(ProcedureNode& node)
{
    if (atStatementEnd())
        return;
    expect(TokenKind::OpenParenthesis, SyntaxError::ExpectedOpenParenthesis);
    if (accept(TokenKind::CloseParenthesis))
        return;
    do {
        Parameter& parameter = node.parameters.emplace_back();
        if (!accept(TokenKind::ByRef))
            parameter.byValue = accept(TokenKind::ByVal);
        parameter.position = token().position;
        parameter.name = identifier();
        declare(parameter.name, parameter.position, Declared::Parameter);
        if (accept(TokenKind::OpenParenthesis)) // `a()` says that an array is meant, and nothing more
            expect(TokenKind::CloseParenthesis, SyntaxError::ExpectedCloseParenthesis);
        if (node.parameters.size() > MostParameters)
            fail(SyntaxError::OutOfMemory);
    } while (accept(TokenKind::Comma));
    expect(TokenKind::CloseParenthesis, SyntaxError::ExpectedCloseParenthesis);
}

void Parser::procedureBody(ProcedureNode& node)
{
    const ProcedureNode* const outerProcedure = std::exchange(m_procedure, &node);
    const int doDepth = std::exchange(m_doDepth, 0);
    const int forDepth = std::exchange(m_forDepth, 0);
    const int withDepth = std::exchange(m_withDepth, 0);
    statements(node.body, Enclosing::Procedure);
    node.endPosition = token().position;
    expect(TokenKind::End, SyntaxError::ExpectedEnd);
    if (node.kind == ProcedureKind::Sub) {
        expect(TokenKind::Sub, SyntaxError::ExpectedSub);
    } else if (node.kind == ProcedureKind::Function) {
        expect(TokenKind::Function, SyntaxError::ExpectedFunction);
    } else {
        if (!atWord("property"))
            fail(SyntaxError::ExpectedProperty);
        advance();
    }
    m_procedure = outerProcedure;
    m_doDepth = doDepth;
    m_forDepth = forDepth;
    m_withDepth = withDepth;
}

void Parser::classDeclaration()
{
    ClassNode& node = m_tree.classNodes.emplace_back();
    advance();
    node.position = token().position;
    node.name = identifier();
    declare(node.name, node.position, Declared::Class);
    if (at(TokenKind::End))
        fail(SyntaxError::ExpectedStatement);
    expectStatementEnd();
    Names names;
    Names* const outer = std::exchange(m_names, &names);
    m_class = &node;
    for (skipLineEnds(); !at(TokenKind::End); skipLineEnds()) {
        if (at(TokenKind::EndOfText))
            fail(SyntaxError::ExpectedEnd);
        classMember(node);
        if (!at(TokenKind::End)) // which needs no separator before it
            expectStatementEnd();
    }
    advance();
    expect(TokenKind::Class, SyntaxError::ExpectedClass);
    m_class = nullptr;
    m_names = outer;
    m_tree.classes.push_back(&node);
}

void Parser::classMember(ClassNode& node)
{
    bool isPublic = true;
    bool isDefault = false;
    bool hasAccess = false;
    const Position start = token().position;
    if (at(TokenKind::Public) || at(TokenKind::Private)) {
        hasAccess = true;
        isPublic = at(TokenKind::Public);
        advance();
    }
    if (atWord("default") &&
        !(hasAccess && (peek().kind == TokenKind::Comma || peek().kind == TokenKind::EndOfLine ||
                        peek().kind == TokenKind::OpenParenthesis))) {
        if (!hasAccess || !isPublic)
            fail(SyntaxError::DefaultNeedsPublic, start);
        isDefault = true;
        advance();
    }
    if (at(TokenKind::Sub) || at(TokenKind::Function) || atWord("property")) {
        const bool isVariable = hasAccess && atWord("property") && !startsProperty() &&
                                (peek().kind == TokenKind::EndOfLine || peek().kind == TokenKind::Comma);
        if (!isVariable) {
            classProcedure(node, isPublic, isDefault);
            return;
        }
    }
    if (isDefault)
        fail(SyntaxError::DefaultMisplaced);
    if (at(TokenKind::Const)) {
        constStatement(m_tree.statements, &node.constants, isPublic);
    } else if (hasAccess || at(TokenKind::Dim)) {
        if (!hasAccess || at(TokenKind::Dim))
            advance();
        classFields(node, isPublic);
    } else {
        fail(SyntaxError::ExpectedStatement);
    }
}

void Parser::classFields(ClassNode& node, bool isPublic)
{
    do {
        Declarator& field = node.fields.emplace_back(declarator());
        field.isPublic = isPublic;
        declare(field.name, field.position, Declared::Variable);
    } while (accept(TokenKind::Comma));
}

void Parser::classProcedure(ClassNode& node, bool isPublic, bool isDefault)
{
    if (isDefault) {
        const bool second = std::any_of(node.procedures.begin(), node.procedures.end(),
                                        [](const ProcedureNode* other) { return other->isDefault; });
        if (second)
            fail(SyntaxError::SecondDefault);
    }
    ProcedureNode* added =
        atWord("property") ? property(isPublic, isDefault) : procedure(isPublic, isDefault, true);
    node.procedures.push_back(added);
}

ProcedureNode* Parser::property(bool isPublic, bool isDefault)
{
    ProcedureNode& node = m_tree.procedureNodes.emplace_back();
    node.isPublic = isPublic;
    node.isDefault = isDefault;
    advance();
    if (at(TokenKind::Get))
        node.kind = ProcedureKind::PropertyGet;
    else if (at(TokenKind::Let))
        node.kind = ProcedureKind::PropertyLet;
    else if (at(TokenKind::Set))
        node.kind = ProcedureKind::PropertySet;
    else
        fail(SyntaxError::ExpectedPropertyKind);
    if (isDefault && node.kind != ProcedureKind::PropertyGet)
        fail(SyntaxError::DefaultOnlyOnGet);
    advance();
    node.position = token().position;
    node.name = identifier();
    const auto [entry, isNew] = m_names->emplace(node.name.folded(), Declared::Procedure);
    for (const ProcedureNode* other : m_class->procedures) {
        const bool sameName = other->name.equalsIgnoringCase(node.name);
        if (sameName && (!isAccessor(other->kind) || other->kind == node.kind))
            fail(SyntaxError::NameRedefined, node.position);
    }
    if (!isNew && entry->second != Declared::Procedure)
        fail(SyntaxError::NameRedefined, node.position);
    Names names;
    Names* const outer = std::exchange(m_names, &names);
    parameterList(node);
    checkAccessors(*m_class, node);
    procedureBody(node);
    m_names = outer;
    return &node;
}

/// The accessors of one property take the same indices; Let and Set take the value besides.
void Parser::checkAccessors(const ClassNode& node, const ProcedureNode& added) const
{
    if (added.kind != ProcedureKind::PropertyGet && added.parameters.empty())
        fail(SyntaxError::PropertyNeedsArgument);
    const auto indices = [](const ProcedureNode& accessor) {
        return accessor.parameters.size() - (accessor.kind == ProcedureKind::PropertyGet ? 0 : 1);
    };
    for (const ProcedureNode* other : node.procedures) {
        if (isAccessor(other->kind) && other->name.equalsIgnoringCase(added.name) &&
            indices(*other) != indices(added))
            fail(SyntaxError::InconsistentArguments);
    }
}

} // namespace zan::script
