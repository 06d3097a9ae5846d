// A plugin for clang's tools that restricts checks to the declarations of this project. The declarations in
// system headers, which are most of each translation unit, are parsed but not checked. Findings in them are
// not reported anyway.

#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

class OwnDeclarations : public clang::ASTConsumer
{
public:
    void HandleTranslationUnit(clang::ASTContext &context) override
    {
        const clang::SourceManager &sources = context.getSourceManager();
        std::vector<clang::Decl *> own;
        for (clang::Decl *declaration : context.getTranslationUnitDecl()->decls()) {
            const clang::SourceLocation location = declaration->getLocation();
            if (location.isValid() && !sources.isInSystemHeader(sources.getExpansionLoc(location)))
                own.push_back(declaration);
        }
        context.setTraversalScope(own);
    }
};

class OwnDeclarationsAction : public clang::PluginASTAction
{
protected:
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance &, llvm::StringRef) override
    {
        return std::make_unique<OwnDeclarations>();
    }
    bool ParseArgs(const clang::CompilerInstance &, const std::vector<std::string> &) override
    {
        return true;
    }
    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<OwnDeclarationsAction> registration("own-declarations", "");

} // namespace
