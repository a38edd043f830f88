#!/usr/bin/env python3
"""Neovim, told of plumkit as docs/editors.md says, shows a finding as it is typed, completes, explains and renames.

neovim_test.py PLUMKIT DOCUMENT
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77

# Types a wrong command into an open script; then asks for what may stand there and for what a command is, and renames a variable.
DRIVER = """
local function wait(condition)
    if not vim.wait(60000, condition) then
        io.stdout:write("nothing came: ", vim.inspect(vim.diagnostic.get(0)), "\\n")
        vim.cmd("cq")
    end
end
local function ask(method)
    local answers = vim.lsp.buf_request_sync(0, method, vim.lsp.util.make_position_params(), 60000)
    for _, answer in pairs(answers) do
        return answer.result
    end
end
wait(function() return #vim.lsp.buf_get_clients(0) > 0 end)
vim.api.nvim_buf_set_lines(0, 0, -1, false, { "//edition:2", "mouse.clik" })
wait(function() return #vim.diagnostic.get(0) > 0 end)
for _, found in ipairs(vim.diagnostic.get(0)) do
    io.stdout:write(found.lnum, ":", found.col, " ", found.code, "\\n")
end
vim.api.nvim_buf_set_lines(0, 1, 2, false, { "mouse.click", "mouse." })
wait(function() return #vim.diagnostic.get(0) > 0 and vim.diagnostic.get(0)[1].lnum == 2 end)
vim.api.nvim_win_set_cursor(0, { 2, 8 })
io.stdout:write(ask("textDocument/hover").contents.value, "\\n")
vim.api.nvim_win_set_cursor(0, { 3, 6 })
vim.cmd("startinsert!")
local labels = {}
for _, item in ipairs(ask("textDocument/completion")) do
    labels[#labels + 1] = item.label
end
io.stdout:write(table.concat(labels, " "), "\\n")
vim.cmd("stopinsert")
vim.api.nvim_buf_set_lines(0, 1, 3, false, { "set.who 1", 'os.tips $"{who}"' })
wait(function() return #vim.diagnostic.get(0) == 0 end)
vim.api.nvim_win_set_cursor(0, { 3, 12 })
local parameters = vim.lsp.util.make_position_params()
parameters.newName = "whom"
for _, answer in pairs(vim.lsp.buf_request_sync(0, "textDocument/rename", parameters, 60000)) do
    vim.lsp.util.apply_workspace_edit(answer.result, "utf-16")
end
io.stdout:write(table.concat(vim.api.nvim_buf_get_lines(0, 0, -1, false), "|"), "\\n")
vim.cmd("qa!")
"""


def main():
    kit, document = sys.argv[1:3]
    neovim = shutil.which("nvim")
    if not neovim:
        print("there is no nvim here")
        return SKIPPED
    with open(document, encoding="utf-8") as page:
        setup = re.search(r"```lua\n(.*?)```", page.read(), re.DOTALL).group(1)
    with tempfile.TemporaryDirectory() as folder:
        for name, content in (("init.lua", setup), ("driver.lua", DRIVER), ("main.wf", "//edition:2\n")):
            with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                file.write(content)
        environment = dict(os.environ, HOME=folder, XDG_RUNTIME_DIR=folder,
                           PATH=os.path.dirname(kit) + os.pathsep + os.environ["PATH"])
        ended = subprocess.run(
            [neovim, "--headless", "-n", "-u", "init.lua", "main.wf", "-S", "driver.lua"], cwd=folder, env=environment,
            capture_output=True, text=True, timeout=110)
    lines = ended.stdout.splitlines()
    print(ended.stdout, ended.stderr)
    assert ended.returncode == 0, ended.returncode
    assert lines[0] == "1:6 syntax", lines
    assert "Clicks the left button." in lines, lines
    assert "d_click" in lines[-2].split() and "while_click" in lines[-2].split(), lines
    assert lines[-1] == '//edition:2|set.whom 1|os.tips $"{whom}"', lines
    return 0


if __name__ == "__main__":
    sys.exit(main())
