#pragma once

#include "script/syntax/Ast.h"
#include "script/syntax/Token.h"

#include <unordered_map>
#include <vector>

namespace zan::script {

/// Reads the tokens of one text into a tree. Raises CompileError at the first mistake, with the number and the
/// place that the classic engine reports.
class Parser
{
public:
    /// The tokens must end with EndOfText and stay alive while the parser works.
    explicit Parser(const std::vector<Token>& tokens)
        : m_tokens(tokens)
    {}

    /// A text of declarations and statements.
    SyntaxTree parseProgram();
    /// A text that is one expression.
    SyntaxTree parseExpressionText();

private:
    /// What a name in a scope was declared as; decides which second declaration is a redefinition.
    enum class Declared : std::uint8_t { Variable, Constant, Procedure, Class, Parameter };
    using Names = std::unordered_map<values::Name, Declared>;
    /// What ends the block being read.
    enum class Enclosing : std::uint8_t { Program, Procedure, If, Else, InlineIf, Select, For, Do, While, With };

    /// Most levels of anything in anything; a text that nests deeper does not compile. Keeps every walk over the
    /// tree far from the end of the native stack.
    static constexpr int MaximumDepth = 200;
    class Nesting
    {
    public:
        explicit Nesting(Parser& parser);
        ~Nesting() { --m_parser.m_depth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& m_parser;
    };

    // Tokens
    const Token& token() const noexcept { return m_tokens[m_place]; }
    const Token& peek(std::size_t ahead = 1) const noexcept;
    bool at(TokenKind kind) const noexcept { return token().kind == kind; }
    bool atWord(const char* lowerCase) const;
    bool accept(TokenKind kind);
    void expect(TokenKind kind, SyntaxError otherwise);
    void advance() noexcept { m_place += at(TokenKind::EndOfText) ? 0 : 1; }
    [[noreturn]] void fail(SyntaxError error) const;
    [[noreturn]] void fail(SyntaxError error, Position position) const;
    bool atLineEnd() const noexcept;
    bool atStatementEnd() const noexcept;
    void skipLineEnds();
    values::Name identifier();
    void expectStatementEnd(SyntaxError otherwise = SyntaxError::ExpectedEndOfStatement);

    // Expressions
    Expression* expression(int minimum = 0);
    Expression* operand();
    Expression* primary();
    Expression* postfix(Expression* left);
    Expression* literal(values::Variant value, LiteralKind kind);
    Expression* keywordValue(values::Variant value);
    std::vector<Expression*> argumentList();
    std::vector<Expression*> parenthesisedArguments();
    Expression* newNode(ExpressionKind kind);
    Expression* binary(Operator op, Position position, Expression* left, Expression* right);
    Expression* unary(Operator op);
    Expression* finish(Expression* node) const;
    Expression* word(Expression* left);
    values::Variant constantExpression();
    values::Variant constantValue(const Expression& node) const;

    // Statements
    void statements(Block& block, Enclosing enclosing, int openLine = 0);
    void statement(Block& block, Enclosing enclosing);
    Statement* newStatement(StatementKind kind);
    bool endsBlock(Enclosing enclosing) const;
    void afterStatement(Enclosing enclosing, int openLine = 0);
    bool keywordStatement(Block& block, Enclosing enclosing);
    bool blockStatement(Block& block, Enclosing enclosing);
    bool procedureInBlock(Enclosing enclosing);
    void expressionStatement(Block& block);
    Expression* parenthesise(Expression* inner);
    void callStatement(Block& block);
    void setStatement(Block& block);
    void dimStatement(Block& block);
    void constStatement(Block& block, std::vector<ConstantNode>* constants, bool isPublic);
    void redimStatement(Block& block);
    void eraseStatement(Block& block);
    void exitStatement(Block& block);
    void onErrorStatement(Block& block);
    void optionStatement();
    void ifStatement(Block& block, Enclosing enclosing);
    void blockIf(Statement& statement);
    void inlineIf(Statement& statement);
    void inlineBody(Block& block);
    void selectStatement(Block& block);
    void forStatement(Block& block);
    void forEachStatement(Block& block, Statement& statement);
    void closeFor(Statement& statement);
    void doStatement(Block& block);
    void whileStatement(Block& block);
    void withStatement(Block& block);
    void loopCondition(Statement& statement);
    Expression* assignable(SyntaxError otherwise);

    // Declarations
    bool declarationStatement();
    bool startsProperty() const;
    Declarator declarator();
    void declare(values::Name name, Position position, Declared kind);
    ProcedureNode* procedure(bool isPublic, bool isDefault, bool inClass);
    void procedureBody(ProcedureNode& node);
    ProcedureNode* property(bool isPublic, bool isDefault);
    void parameterList(ProcedureNode& node);
    void classDeclaration();
    void classMember(ClassNode& node);
    void classFields(ClassNode& node, bool isPublic);
    void classProcedure(ClassNode& node, bool isPublic, bool isDefault);
    void checkAccessors(const ClassNode& node, const ProcedureNode& added) const;

    const std::vector<Token>& m_tokens;
    std::size_t m_place = 0;
    int m_depth = 0;
    SyntaxTree m_tree;
    Names m_globals;
    Names* m_names = &m_globals;
    const ClassNode* m_class = nullptr;
    const ProcedureNode* m_procedure = nullptr;
    int m_doDepth = 0;
    int m_forDepth = 0;
    int m_withDepth = 0;
    bool m_anyStatement = false;
};

} // namespace zan::script
