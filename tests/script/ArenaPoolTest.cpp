#include "script/ScriptControl.h"
#include "script/compiler/SlotArena.h"
#include "script/machine/Vm.h"

#include <gtest/gtest.h>

using namespace zan::script;
using zan::values::Kind;

TEST(ArenaPool, WhatAControlHasUsedServesTheNextOneEmptied)
{
    {
        ScriptControl control;
        ASSERT_TRUE(
            control.AddCode(QStringLiteral("Sub Main : Dim text : text = String(40, \"a\") : End Sub : Main")));
    }
    std::unique_ptr<SlotArena> arena = ArenaPool::ofThread().take(Vm::StackSlots);
    EXPECT_GT(arena->used(), 0u) << "fresh memory, though a control has just ended";
    for (std::size_t place = 0; place < arena->used(); ++place)
        EXPECT_TRUE(arena->begin()[place].is(Kind::Empty)) << place;
    ArenaPool::ofThread().give(std::move(arena));
}
