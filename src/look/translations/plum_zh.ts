<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>plum::AppActions</name>
    <message>
        <source>The new app</source>
        <translation>新应用</translation>
    </message>
    <message>
        <source>%1 is not saved.</source>
        <translation>%1 尚未保存。</translation>
    </message>
    <message>
        <source>Line ends mended: every line of %1 ends in CR LF.</source>
        <translation>换行符已修正：%1 的每一行都以 CR LF 结尾。</translation>
    </message>
    <message>
        <source>Every app in the folder is in the list already.</source>
        <translation>文件夹里的应用都已在列表中。</translation>
    </message>
    <message>
        <source>Taken in: %1</source>
        <translation>已收入：%1</translation>
    </message>
</context>
<context>
    <name>plum::DownloadText</name>
    <message>
        <source>sending the request</source>
        <translation>发送请求...</translation>
    </message>
    <message>
        <source>getting information on the file</source>
        <translation>获取远程文件信息...</translation>
    </message>
    <message>
        <source>data arrives</source>
        <translation>开始接收数据...</translation>
    </message>
    <message>
        <source>the download was cut off</source>
        <translation>下载被终止...</translation>
    </message>
    <message>
        <source>the download was stopped</source>
        <translation>停止下载</translation>
    </message>
    <message>
        <source>the download pauses</source>
        <translation>暂停下载</translation>
    </message>
    <message>
        <source>the server did not give the file</source>
        <translation>连接服务器失败</translation>
    </message>
    <message>
        <source>the request could not be sent</source>
        <translation>发送请求失败</translation>
    </message>
</context>
<context>
    <name>plum::CompletionList</name>
    <message>
        <source>Suggestions</source>
        <translation>建议</translation>
    </message>
</context>
<context>
    <name>plum::EditPanel</name>
    <message>
        <source>Save and run line by line (F10)</source>
        <translation>保存并逐行运行 (F10)</translation>
    </message>
    <message>
        <source>No line runs from here on.</source>
        <translation>从这里起没有会运行的行。</translation>
    </message>
    <message>
        <source>Runs are held before line %1.</source>
        <translation>运行将在第 %1 行之前停住。</translation>
    </message>
    <message>
        <source>No breakpoint in line %1 any more.</source>
        <translation>第 %1 行不再有断点。</translation>
    </message>
    <message>
        <source>Breakpoint.</source>
        <translation>断点。</translation>
    </message>
    <message>
        <source>Pick from the screen (Ctrl+P)</source>
        <translation>从屏幕上选取 (Ctrl+P)</translation>
    </message>
    <message>
        <source>(%1 more in this line)</source>
        <translation>（此行另有 %1 处）</translation>
    </message>
    <message>
        <source>Errors: %1 · warnings: %2 · hints: %3 · F8 goes to the next one</source>
        <translation>错误：%1 · 警告：%2 · 提示：%3 · 按 F8 转到下一处</translation>
    </message>
    <message>
        <source>Keyword, without blanks</source>
        <translation>关键词，不含空格</translation>
    </message>
    <message>
        <source>Keyword</source>
        <translation>关键词</translation>
    </message>
    <message>
        <source>Save (Ctrl+S)</source>
        <translation>保存 (Ctrl+S)</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>New app</source>
        <translation>新建应用</translation>
    </message>
    <message>
        <source>Edit script</source>
        <translation>编辑脚本</translation>
    </message>
    <message>
        <source>%1 line ends do not end a line when the script runs.</source>
        <translation>有 %1 处换行符在运行脚本时不起换行作用。</translation>
    </message>
    <message>
        <source>Mend them</source>
        <translation>修正</translation>
    </message>
    <message>
        <source>Saving ends every line in CR LF.</source>
        <translation>保存时每一行都将以 CR LF 结尾。</translation>
    </message>
    <message>
        <source>Save and run (F5)</source>
        <translation>保存并运行 (F5)</translation>
    </message>
    <message>
        <source>.main.wf, a copy that is not run</source>
        <translation>.main.wf，不会运行的副本</translation>
    </message>
    <message>
        <source>Begin with a line that says what the app does</source>
        <translation>先写一行，说明此应用的用途</translation>
    </message>
    <message>
        <source>What this app does</source>
        <translation>此应用的用途</translation>
    </message>
</context>
<context>
    <name>plum::Footer</name>
    <message>
        <source>Go on (Enter)</source>
        <translation>继续（Enter）</translation>
    </message>
    <message>
        <source>1 update</source>
        <translation>1 个更新</translation>
    </message>
    <message>
        <source>%1 updates</source>
        <translation>%1 个更新</translation>
    </message>
    <message>
        <source>No app has this keyword.</source>
        <translation>没有使用此关键词的应用。</translation>
    </message>
    <message>
        <source>Create it? (Ctrl+N)</source>
        <translation>新建一个？(Ctrl+N)</translation>
    </message>
    <message>
        <source>Enter runs nothing: the keyword comes before the first blank.</source>
        <translation>按 Enter 不会运行：关键词应在第一个空格之前。</translation>
    </message>
    <message>
        <source>Enter runs nothing yet.</source>
        <translation>现在按 Enter 不会运行。</translation>
    </message>
    <message>
        <source>Look for "%1"</source>
        <translation>查找“%1”</translation>
    </message>
    <message>
        <source>Enter in the keyword box runs nothing while "%1" is selected.</source>
        <translation>已选中“%1”，在关键词框里按 Enter 不会运行。</translation>
    </message>
    <message>
        <source>Deselect it</source>
        <translation>取消选中</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Show the line</source>
        <translation>显示该行</translation>
    </message>
    <message>
        <source>What happened?</source>
        <translation>发生了什么？</translation>
    </message>
</context>
<context>
    <name>plum::FixedText</name>
    <message>
        <source>Successfully</source>
        <translation>操作成功</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>出错了</translation>
    </message>
    <message>
        <source>Keyword is required</source>
        <translation>请填写关键词</translation>
    </message>
    <message>
        <source>Keyword already exists</source>
        <translation>该关键词已存在</translation>
    </message>
    <message>
        <source>The Keyword already exists, whether it is renamed ?</source>
        <translation>该关键词已存在，请换一个。</translation>
    </message>
    <message>
        <source>Can not exist *[\/:*?"&lt;|&gt;]*</source>
        <translation>不能含有 \ / : * ? " &lt; | &gt; 这些字符</translation>
    </message>
    <message>
        <source>already exists</source>
        <translation>已存在</translation>
    </message>
    <message>
        <source>Guide does not exist</source>
        <translation>没有说明</translation>
    </message>
    <message>
        <source>installed successfully</source>
        <translation>安装成功</translation>
    </message>
    <message>
        <source>is editting</source>
        <translation>正在编辑</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>隐藏</translation>
    </message>
</context>
<context>
    <name>plum::LineNumbers</name>
    <message>
        <source>Line numbers</source>
        <translation>行号</translation>
    </message>
    <message>
        <source>A click sets a breakpoint, and takes it away (F9)</source>
        <translation>单击设置或取消断点 (F9)</translation>
    </message>
</context>
<context>
    <name>plum::RunStepping</name>
    <message>
        <source>Another run goes on. This one can be followed when that one is over.</source>
        <translation>另一个运行尚未结束。结束之后才能跟踪这个运行。</translation>
    </message>
    <message>
        <source>Line %1 has failed: %2</source>
        <translation>第 %1 行失败：%2</translation>
    </message>
    <message>
        <source>Held before line %1</source>
        <translation>停在第 %1 行之前</translation>
    </message>
    <message>
        <source>Held before line %1 of %2: %3</source>
        <translation>停在 %2 的第 %1 行之前：%3</translation>
    </message>
</context>
<context>
    <name>plum::ScreenSearch</name>
    <message>
        <source>There is no picture %1.</source>
        <translation>图片 %1 不存在。</translation>
    </message>
</context>
<context>
    <name>plum::InstallDialog</name>
    <message>
        <source>What it may do</source>
        <translation>它可能做什么</translation>
    </message>
    <message>
        <source>The script of this app has changed. May it run like this?</source>
        <translation>此应用的脚本已更改。允许它这样运行吗？</translation>
    </message>
    <message>
        <source>You have taken back what this app may do. May it run again?</source>
        <translation>您已收回此应用的权限。允许它再次运行吗？</translation>
    </message>
    <message>
        <source>What it may do is worked out when it has come. Install only what you trust.</source>
        <translation>它可以做什么，要等下载后才能得知。请只安装您信任的应用。</translation>
    </message>
    <message>
        <source>It may do nothing that it could not do before.</source>
        <translation>它没有新增任何权限。</translation>
    </message>
    <message>
        <source>It could not do this before:</source>
        <translation>新增的权限：</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>安装</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Plum asks</source>
        <translation>Plum 提问</translation>
    </message>
    <message>
        <source>Install this app in place of the one that is there?</source>
        <translation>要安装此应用并替换已有的应用吗？</translation>
    </message>
    <message>
        <source>Install this app?</source>
        <translation>要安装此应用吗？</translation>
    </message>
    <message>
        <source>Version and size are not known before it has come.</source>
        <translation>版本和大小要等下载后才能知道。</translation>
    </message>
    <message>
        <source>Version %1, %2</source>
        <translation>版本 %1，%2</translation>
    </message>
    <message>
        <source>This store is on this computer and signs nothing.</source>
        <translation>此商店位于这台电脑上，不对任何内容签名。</translation>
    </message>
</context>
<context>
    <name>plum::Item</name>
    <message>
        <source>Menu of the tray icon</source>
        <translation>托盘图标菜单</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Menu of the app</source>
        <translation>应用菜单</translation>
    </message>
</context>
<context>
    <name>plum::KeySheet</name>
    <message>
        <source>hold runs before this line, in the editor</source>
        <translation>编辑器中：让运行在这一行之前停住</translation>
    </message>
    <message>
        <source>one line on, into a part, out of it, in the editor</source>
        <translation>编辑器中：走一行、进入部分、走出部分</translation>
    </message>
    <message>
        <source>run to this line, hold the run that goes on, in the editor</source>
        <translation>编辑器中：运行到这一行、让正在进行的运行停住</translation>
    </message>
    <message>
        <source>stop the run that is followed, in the editor</source>
        <translation>编辑器中：停止所跟踪的运行</translation>
    </message>
    <message>
        <source>pick a point or a picture from the screen, in the editor</source>
        <translation>编辑器中：从屏幕上选取点或图片</translation>
    </message>
    <message>
        <source>what was found next or before, in the editor</source>
        <translation>编辑器中：下一处或上一处发现的问题</translation>
    </message>
    <message>
        <source>Ctrl+Space, Alt+Down</source>
        <translation>Ctrl+空格、Alt+下</translation>
    </message>
    <message>
        <source>what can stand here, in the editor; Enter or Tab takes it</source>
        <translation>编辑器中：此处可以写什么；回车或 Tab 选用</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Enter</source>
        <translation>回车</translation>
    </message>
    <message>
        <source>Down, Up, Left</source>
        <translation>下、上、左</translation>
    </message>
    <message>
        <source>Menu, Shift+F10</source>
        <translation>菜单键、Shift+F10</translation>
    </message>
    <message>
        <source>runs the marked app, or the selected one of a list</source>
        <translation>运行标出的应用，或列表中选中的应用</translation>
    </message>
    <message>
        <source>into the list and back to the keyword box</source>
        <translation>进入列表，再回到关键词框</translation>
    </message>
    <message>
        <source>one step back: panel, list, keyword box, empty box, hidden</source>
        <translation>后退一步：面板、列表、关键词框、清空、隐藏</translation>
    </message>
    <message>
        <source>new app</source>
        <translation>新建应用</translation>
    </message>
    <message>
        <source>edit the script</source>
        <translation>编辑脚本</translation>
    </message>
    <message>
        <source>save the script</source>
        <translation>保存脚本</translation>
    </message>
    <message>
        <source>run the app, in the editor what it shows</source>
        <translation>运行应用，在编辑器中运行所显示的脚本</translation>
    </message>
    <message>
        <source>rename, in a list</source>
        <translation>重命名（在列表中）</translation>
    </message>
    <message>
        <source>delete, in a list; it asks first</source>
        <translation>删除（在列表中，会先询问）</translation>
    </message>
    <message>
        <source>the menu of a list</source>
        <translation>列表的菜单</translation>
    </message>
    <message>
        <source>this page</source>
        <translation>本页</translation>
    </message>
    <message>
        <source>the manual</source>
        <translation>使用手册</translation>
    </message>
</context>
<context>
    <name>plum::KeywordList</name>
    <message>
        <source>Run</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Edit script</source>
        <translation>编辑脚本</translation>
    </message>
</context>
<context>
    <name>plum::LauncherMenus</name>
    <message>
        <source>That could not be changed</source>
        <translation>无法更改</translation>
    </message>
    <message>
        <source>Plum starts when you log in</source>
        <translation>Plum 会在你登录时启动</translation>
    </message>
    <message>
        <source>Plum does not start when you log in</source>
        <translation>Plum 不会在你登录时启动</translation>
    </message>
</context>
<context>
    <name>plum::LauncherSummons</name>
    <message>
        <source>No hotkey yet.</source>
        <translation>还没有热键。</translation>
    </message>
    <message>
        <source>Choose one</source>
        <translation>选择一个</translation>
    </message>
    <message>
        <source>%1 belongs to another program, maybe another Plum. Plum takes it when it is free.</source>
        <translation>%1 正被另一个程序（可能是另一个 Plum）使用。一旦空出，Plum 会立即使用它。</translation>
    </message>
    <message>
        <source>The key %1 alone shows Plum, so nobody can type it.</source>
        <translation>单独的 %1 键会显示 Plum，因此无法输入该字母。</translation>
    </message>
    <message>
        <source>%1 shows Plum</source>
        <translation>%1 显示 Plum</translation>
    </message>
    <message>
        <source>Choose another one</source>
        <translation>另选一个</translation>
    </message>
</context>
<context>
    <name>plum::LauncherNews</name>
    <message>
        <source>waits while you use the mouse or the keyboard, and 1.5 seconds more</source>
        <translation>在您使用鼠标或键盘时等待，停手 1.5 秒后继续</translation>
    </message>
    <message>
        <source>waits until its window is in front again</source>
        <translation>等待它的窗口回到最前</translation>
    </message>
    <message>
        <source>%1 was not installed</source>
        <translation>%1 没有安装</translation>
    </message>
    <message>
        <source>1 app updated</source>
        <translation>已更新 1 个应用</translation>
    </message>
    <message>
        <source>%1 apps updated</source>
        <translation>已更新 %1 个应用</translation>
    </message>
    <message>
        <source>A run has failed.</source>
        <translation>运行失败。</translation>
    </message>
    <message>
        <source>%1: stopped at line %2</source>
        <translation>%1：已停在第 %2 行</translation>
    </message>
    <message>
        <source>Not started: too many runs wait for each other already.</source>
        <translation>未启动：已有太多脚本在互相等待。</translation>
    </message>
    <message>
        <source>Plum is hidden. Start it again to bring it back, and choose a hotkey there.</source>
        <translation>Plum 已隐藏。再次启动即可显示它，并可在那里选择热键。</translation>
    </message>
    <message>
        <source>Downloading, %1 %</source>
        <translation>正在下载，%1 %</translation>
    </message>
</context>
<context>
    <name>plum::LauncherUi</name>
    <message>
        <source>asks, and nobody can answer without a display</source>
        <translation>提问了，但没有显示器，无人能回答</translation>
    </message>
    <message>
        <source>shows a tip, and nobody can close it without a display</source>
        <translation>显示了提示，但没有显示器，无人能关闭它</translation>
    </message>
    <message>
        <source>nothing is left to run, and the process stays; Ctrl+C or &quot;kill %1&quot; ends it.</source>
        <translation>没有要运行的了，进程仍在；Ctrl+C 或“kill %1”可结束它。</translation>
    </message>
    <message>
        <source>says</source>
        <translation>说</translation>
    </message>
    <message>
        <source>Dropped: %1</source>
        <translation>已放入：%1</translation>
    </message>
    <message>
        <source>✕ ends the script · Enter or Esc only closes this</source>
        <translation>✕ 结束脚本 · 回车或 Esc 只关闭此窗口</translation>
    </message>
    <message>
        <source>✕ goes on with the script · Enter or Esc gives the rest up</source>
        <translation>✕ 继续执行脚本 · 回车或 Esc 放弃其余部分</translation>
    </message>
</context>
<context>
    <name>plum::ManualWindow</name>
    <message>
        <source>(language of the manual)</source>
        <extracomment>The ending that pages in this language have in front of &quot;.md&quot;, with its dot; empty for English.</extracomment>
        <translation>zh</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>使用手册</translation>
    </message>
    <message>
        <source>Find in this page (Ctrl+F)</source>
        <translation>在本页查找 (Ctrl+F)</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>关闭 (Esc)</translation>
    </message>
</context>
<context>
    <name>plum::MessageBoxes</name>
    <message>
        <source>The store has taken this version of &quot;%1&quot; back.</source>
        <translation>商店已收回“%1”的此版本。</translation>
    </message>
    <message>
        <source>Run it all the same?</source>
        <translation>仍要运行吗？</translation>
    </message>
    <message>
        <source>What may it do?</source>
        <translation>它可以做什么？</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>收回</translation>
    </message>
    <message>
        <source>%1 does not run: you have taken this back.</source>
        <translation>%1 不会运行：您已收回这些权限。</translation>
    </message>
    <message>
        <source>%1 may do this and nothing else.</source>
        <translation>%1 可以做以下事情，不能做其他事情。</translation>
    </message>
    <message>
        <source>%1 is your own: nothing limits it. Its script does this.</source>
        <translation>%1 是您自己的应用，没有任何限制。它的脚本会做以下事情。</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃更改</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>继续编辑</translation>
    </message>
    <message>
        <source>Delete &quot;%1&quot;?</source>
        <translation>要删除“%1”吗？</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Run or edit &quot;%1&quot;?</source>
        <translation>运行还是编辑“%1”？</translation>
    </message>
    <message>
        <source>It runs as a program of yours: nothing limits it.</source>
        <translation>它会像你自己的程序一样运行，不受任何限制。</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>plum::PlainStoreForm</name>
    <message>
        <source>Install</source>
        <translation>安装</translation>
    </message>
    <message>
        <source>To install an app, type its name as the store shows it.</source>
        <translation>要安装应用，请输入它在商店中的名称。</translation>
    </message>
    <message>
        <source>Name of an app</source>
        <translation>应用名称</translation>
    </message>
    <message>
        <source>Another program sent a page. It is not from the store. This Plum was built without a browser of its own, so it opens in your default browser.</source>
        <translation>另一个程序发来了一个页面，它不是来自商店。此 Plum 不带浏览器，因此它会在默认浏览器中打开。</translation>
    </message>
    <message>
        <source>Open it</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>A page from another program</source>
        <translation>来自其他程序的页面</translation>
    </message>
    <message>
        <source>This Plum was built without a browser of its own, so the pages of the store open in your default browser.</source>
        <translation>此 Plum 不带浏览器，因此商店页面会在默认浏览器中打开。</translation>
    </message>
    <message>
        <source>Open the page again</source>
        <translation>再次打开页面</translation>
    </message>
</context>
<context>
    <name>plum::RenamePanel</name>
    <message>
        <source>Old keyword</source>
        <translation>旧关键词</translation>
    </message>
    <message>
        <source>New keyword</source>
        <translation>新关键词</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
</context>
<context>
    <name>plum::RunDisplay</name>
    <message>
        <source>%1 is held before line %2</source>
        <translation>%1 停在第 %2 行之前</translation>
    </message>
    <message>
        <source>%1 runs, line %2</source>
        <translation>正在运行 %1，第 %2 行</translation>
    </message>
    <message>
        <source>%1 lets you work, and goes on in %2 s</source>
        <translation>%1 让您先操作，%2 秒后继续</translation>
    </message>
    <message>
        <source>%1 waits at line %2 until its window is in front again</source>
        <translation>%1 在第 %2 行等待，直到它的窗口回到最前</translation>
    </message>
    <message>
        <source>%1: done</source>
        <translation>%1：完成</translation>
    </message>
</context>
<context>
    <name>plum::ScriptEditor</name>
    <message>
        <source>Script</source>
        <translation>脚本</translation>
    </message>
</context>
<context>
    <name>plum::StepView</name>
    <message>
        <source>Go on</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Next line</source>
        <translation>下一行</translation>
    </message>
    <message>
        <source>Into the part</source>
        <translation>进入部分</translation>
    </message>
    <message>
        <source>Out of it</source>
        <translation>走出部分</translation>
    </message>
    <message>
        <source>To the caret</source>
        <translation>到光标处</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>停住</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>The run goes on.</source>
        <translation>运行在继续。</translation>
    </message>
    <message>
        <source>This line</source>
        <translation>这一行</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>变量</translation>
    </message>
</context>
<context>
    <name>plum::StoreForm</name>
    <message>
        <source>This store is on this computer and signs nothing.</source>
        <translation>此商店位于这台电脑上，不对任何内容签名。</translation>
    </message>
    <message>
        <source>%1 is installed: Reinstall</source>
        <translation>%1 已安装：重新安装</translation>
    </message>
    <message>
        <source>%1 is installed: Update to %2</source>
        <translation>%1 已安装：更新到 %2</translation>
    </message>
    <message>
        <source>Installed apps</source>
        <translation>已安装的应用</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>%1 was not installed</source>
        <translation>%1 没有安装</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>关闭 (Esc)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1 of %2, %3 a second</source>
        <translation>%1 / %2，每秒 %3</translation>
    </message>
    <message>
        <source>Title bar</source>
        <translation>标题栏</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>下载</translation>
    </message>
    <message>
        <source>Retry %1</source>
        <translation>重试 %1</translation>
    </message>
</context>
<context>
    <name>plum::WebStoreForm</name>
    <message>
        <source>The store has no such page.</source>
        <translation>商店没有这个页面。</translation>
    </message>
    <message>
        <source>The store has a problem of its own. Try again a little later.</source>
        <translation>商店自身出了问题，请稍后再试。</translation>
    </message>
    <message>
        <source>The store does not give this page away.</source>
        <translation>商店不提供这个页面。</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>这台电脑没有连接网络。</translation>
    </message>
    <message>
        <source>The store was not found. Is this computer connected to the network?</source>
        <translation>找不到商店。这台电脑连接网络了吗？</translation>
    </message>
    <message>
        <source>The store takes too long to answer.</source>
        <translation>商店响应太慢。</translation>
    </message>
    <message>
        <source>The store cannot prove that it is the one it says it is.</source>
        <translation>商店无法证明自己的身份。</translation>
    </message>
    <message>
        <source>The store does not answer.</source>
        <translation>商店没有响应。</translation>
    </message>
    <message>
        <source>The store&apos;s answer is no page that can be shown.</source>
        <translation>商店的回应不是可以显示的页面。</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Another program sent this page. It is not from the store and cannot reach anything.</source>
        <translation>这个页面由另一个程序发来。它不是来自商店，也无法访问任何内容。</translation>
    </message>
    <message>
        <source>This page was too much for the browser, or it broke.</source>
        <translation>浏览器无法显示这个页面，或页面已崩溃。</translation>
    </message>
    <message>
        <source>A page from another program</source>
        <translation>来自其他程序的页面</translation>
    </message>
    <message>
        <source>%1 (store page)</source>
        <translation>%1（商店页面）</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>正在加载…</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>页面</translation>
    </message>
</context>
<context>
    <name>plum::MainPanel</name>
    <message>
        <source>Store</source>
        <translation>商店</translation>
    </message>
    <message>
        <source>Hotkey</source>
        <translation>热键</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Type a keyword</source>
        <translation>输入关键词</translation>
    </message>
    <message>
        <source>Keyword</source>
        <translation>关键词</translation>
    </message>
    <message>
        <source>Launcher</source>
        <translation>启动器</translation>
    </message>
    <message>
        <source>All apps</source>
        <translation>全部应用</translation>
    </message>
    <message>
        <source>Apps that match</source>
        <translation>匹配的应用</translation>
    </message>
</context>
<context>
    <name>plum::hotkey</name>
    <message>
        <source>Use this hotkey</source>
        <translation>使用此热键</translation>
    </message>
    <message>
        <source>Remove and close</source>
        <translation>取消热键并关闭</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>停用</translation>
    </message>
    <message>
        <source>Hotkey</source>
        <translation>热键</translation>
    </message>
    <message>
        <source>Takes the key for Plum.</source>
        <translation>让 Plum 占用此键。</translation>
    </message>
    <message>
        <source>Gives the key back until the next start, and keeps the choice.</source>
        <translation>在下次启动前释放此键，并保留选择。</translation>
    </message>
    <message>
        <source>OK turns the hotkey on and locks the choice; NO turns it off and unlocks it.</source>
        <translation>OK 启用热键并锁定选择；NO 停用热键并解除锁定。</translation>
    </message>
    <message>
        <source>Gives the key back until the next start.</source>
        <translation>在下次启动前释放此键。</translation>
    </message>
    <message>
        <source>Choose a modifier and a letter first</source>
        <translation>请先选择修饰键和字母</translation>
    </message>
    <message>
        <source>Shows or hides the launcher from anywhere</source>
        <translation>在任何地方显示或隐藏启动器</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Another program uses this combination. Choose another one.</source>
        <translation>另一个程序正在使用这个组合，请换一个。</translation>
    </message>
    <message>
        <source>%1 shows and hides Plum.</source>
        <translation>%1 显示或隐藏 Plum。</translation>
    </message>
    <message>
        <source>No hotkey is on. Choose a modifier and a letter.</source>
        <translation>没有启用热键。请选择修饰键和字母。</translation>
    </message>
    <message>
        <source>Letter of the hotkey</source>
        <translation>热键的字母</translation>
    </message>
</context>
<context>
    <name>plum::sett</name>
    <message>
        <source>Back to version %1</source>
        <translation>恢复到版本 %1</translation>
    </message>
    <message>
        <source>What may it do?</source>
        <translation>它可以做什么？</translation>
    </message>
    <message>
        <source>Show launcher</source>
        <translation>显示启动器</translation>
    </message>
    <message>
        <source>Hide launcher</source>
        <translation>隐藏启动器</translation>
    </message>
    <message>
        <source>Edit script</source>
        <translation>编辑脚本</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Open folder</source>
        <translation>打开文件夹</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>说明</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>New app</source>
        <translation>新建应用</translation>
    </message>
    <message>
        <source>Hotkey</source>
        <translation>热键</translation>
    </message>
    <message>
        <source>Product page</source>
        <translation>产品页面</translation>
    </message>
    <message>
        <source>Discussion</source>
        <translation>讨论</translation>
    </message>
    <message>
        <source>Repair dialogs</source>
        <translation>修复对话框</translation>
    </message>
    <message>
        <source>Wishes</source>
        <translation>许愿</translation>
    </message>
    <message>
        <source>About Plum</source>
        <translation>关于 Plum</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>End at once</source>
        <translation>立即结束</translation>
    </message>
    <message>
        <source>On the web</source>
        <translation>网页</translation>
    </message>
    <message>
        <source>Look again</source>
        <translation>重新查找应用</translation>
    </message>
    <message>
        <source>What happened?</source>
        <translation>发生了什么？</translation>
    </message>
    <message>
        <source>Manual (F1)</source>
        <translation>使用手册 (F1)</translation>
    </message>
    <message>
        <source>Keys (Shift+F1)</source>
        <translation>按键 (Shift+F1)</translation>
    </message>
    <message>
        <source>Start when I log in</source>
        <translation>登录时启动</translation>
    </message>
</context>
<context>
    <name>plum::shurubox</name>
    <message>
        <source>Plum asks</source>
        <translation>Plum 提问</translation>
    </message>
    <message>
        <source>Close and go on</source>
        <translation>关闭并继续</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Install under this keyword</source>
        <translation>用此关键词安装</translation>
    </message>
    <message>
        <source>Replace the existing app</source>
        <translation>替换已有的应用</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>详细信息</translation>
    </message>
    <message>
        <source>Choose a keyword for this package</source>
        <translation>为这个应用包选择关键词</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>应用包</translation>
    </message>
    <message>
        <source>Its own keyword</source>
        <translation>原来的关键词</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>提问</translation>
    </message>
    <message>
        <source>Answer</source>
        <translation>回答</translation>
    </message>
    <message>
        <source>Keyword</source>
        <translation>关键词</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>plum::Sheet</name>
    <message>
        <source>Sees the screen.</source>
        <translation>查看屏幕。</translation>
    </message>
    <message>
        <source>Reads the text on the clipboard.</source>
        <translation>读取剪贴板上的文字。</translation>
    </message>
    <message>
        <source>Sees which windows are open, and where.</source>
        <translation>查看打开了哪些窗口以及它们的位置。</translation>
    </message>
    <message>
        <source>Sees where the mouse pointer is.</source>
        <translation>查看鼠标指针的位置。</translation>
    </message>
    <message>
        <source>Reads %1.</source>
        <translation>读取%1。</translation>
    </message>
    <message>
        <source>any file that you can read</source>
        <translation>您能读取的任何文件</translation>
    </message>
    <message>
        <source>the file that you type or drop</source>
        <translation>您输入或拖入的文件</translation>
    </message>
    <message>
        <source>Writes %1.</source>
        <translation>写入%1。</translation>
    </message>
    <message>
        <source>any file that you can write</source>
        <translation>您能写入的任何文件</translation>
    </message>
    <message>
        <source>Contacts %1.</source>
        <translation>连接%1。</translation>
    </message>
    <message>
        <source>any server</source>
        <translation>任何服务器</translation>
    </message>
    <message>
        <source>the address that you type</source>
        <translation>您输入的地址</translation>
    </message>
    <message>
        <source>Presses keys%1.</source>
        <translation>按下按键%1。</translation>
    </message>
    <message>
        <source>Types %1.</source>
        <translation>输入%1。</translation>
    </message>
    <message>
        <source>text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>what you type</source>
        <translation>您输入的内容</translation>
    </message>
    <message>
        <source>Moves the mouse and clicks%1.</source>
        <translation>移动鼠标并点击%1。</translation>
    </message>
    <message>
        <source>Puts text on the clipboard.</source>
        <translation>把文字放到剪贴板上。</translation>
    </message>
    <message>
        <source>Moves, hides or closes %1.</source>
        <translation>移动、隐藏或关闭%1。</translation>
    </message>
    <message>
        <source>windows of other programs</source>
        <translation>其他程序的窗口</translation>
    </message>
    <message>
        <source>the window that you name</source>
        <translation>您指定的窗口</translation>
    </message>
    <message>
        <source>Starts or opens %1.</source>
        <translation>启动或打开%1。</translation>
    </message>
    <message>
        <source>any program: it can then do everything that you can</source>
        <translation>任何程序：这样它就能做您能做的一切</translation>
    </message>
    <message>
        <source>what you type or drop</source>
        <translation>您输入或拖入的内容</translation>
    </message>
    <message>
        <source>Evaluates JavaScript, which on Windows can do everything that you can.</source>
        <translation>执行 JavaScript，它在 Windows 上能做您能做的一切。</translation>
    </message>
    <message>
        <source>Locks the screen.</source>
        <translation>锁定屏幕。</translation>
    </message>
    <message>
        <source>Switches the monitor off.</source>
        <translation>关闭显示器。</translation>
    </message>
    <message>
        <source>Logs you off without asking programs.</source>
        <translation>不询问各程序就注销。</translation>
    </message>
    <message>
        <source>Switches the machine off without asking programs.</source>
        <translation>不询问各程序就关机。</translation>
    </message>
    <message>
        <source>Restarts the machine without asking programs.</source>
        <translation>不询问各程序就重新启动。</translation>
    </message>
    <message>
        <source>, </source>
        <translation>、</translation>
    </message>
    <message>
        <source> and </source>
        <translation>和</translation>
    </message>
    <message>
        <source>what is in its own folder</source>
        <translation>它自己的文件夹里的内容</translation>
    </message>
    <message>
        <source>what is on the desktop</source>
        <translation>桌面上的内容</translation>
    </message>
    <message>
        <source>what is in %1</source>
        <translation>%1 里的内容</translation>
    </message>
    <message>
        <source>%1 in its own folder</source>
        <translation>它自己的文件夹里的 %1</translation>
    </message>
    <message>
        <source>%1 in the folder of the app %2</source>
        <translation>应用 %2 的文件夹里的 %1</translation>
    </message>
    <message>
        <source>%1 in Plum&apos;s own folder</source>
        <translation>Plum 自己的文件夹里的 %1</translation>
    </message>
    <message>
        <source>%1 on the desktop</source>
        <translation>桌面上的 %1</translation>
    </message>
    <message>
        <source> in the window %1</source>
        <translation>（在窗口 %1 中）</translation>
    </message>
    <message>
        <source>%1 others</source>
        <translation>另外 %1 项</translation>
    </message>
    <message>
        <source>%1, and where that leads</source>
        <translation>%1 以及它转向的地方</translation>
    </message>
    <message>
        <source>the window %1</source>
        <translation>窗口 %1</translation>
    </message>
    <message>
        <source>Keys and clicks go to whatever window is in front: they are as good as your own hands.</source>
        <translation>按键和点击会落到最前面的任何窗口：它们就如同您自己的双手。</translation>
    </message>
    <message>
        <source>Touches nothing but its own boxes.</source>
        <translation>除了它自己的对话框，什么也不碰。</translation>
    </message>
    <message>
        <source>Contacts nobody.</source>
        <translation>不与任何人联系。</translation>
    </message>
    <message>
        <source>looking at the screen</source>
        <translation>查看屏幕</translation>
    </message>
    <message>
        <source>reading the clipboard</source>
        <translation>读取剪贴板</translation>
    </message>
    <message>
        <source>looking at windows</source>
        <translation>查看窗口</translation>
    </message>
    <message>
        <source>looking where the pointer is</source>
        <translation>查看指针的位置</translation>
    </message>
    <message>
        <source>reading %1</source>
        <translation>读取 %1</translation>
    </message>
    <message>
        <source>writing %1</source>
        <translation>写入 %1</translation>
    </message>
    <message>
        <source>contacting %1</source>
        <translation>联系 %1</translation>
    </message>
    <message>
        <source>pressing keys</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>typing</source>
        <translation>输入文字</translation>
    </message>
    <message>
        <source>moving the mouse or clicking</source>
        <translation>移动鼠标或点击</translation>
    </message>
    <message>
        <source>changing the clipboard</source>
        <translation>改变剪贴板</translation>
    </message>
    <message>
        <source>changing windows</source>
        <translation>改变窗口</translation>
    </message>
    <message>
        <source>starting %1</source>
        <translation>启动 %1</translation>
    </message>
    <message>
        <source>evaluating JavaScript</source>
        <translation>执行 JavaScript</translation>
    </message>
    <message>
        <source>locking the screen</source>
        <translation>锁定屏幕</translation>
    </message>
    <message>
        <source>switching the monitor off</source>
        <translation>关闭显示器</translation>
    </message>
    <message>
        <source>logging you off</source>
        <translation>注销</translation>
    </message>
    <message>
        <source>switching the machine off</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>restarting the machine</source>
        <translation>重新启动计算机</translation>
    </message>
</context>
<context>
    <name>plum::CheckWords</name>
    <message>
        <source>Without arguments of its own, %1 takes those of the line before.</source>
        <translation>%1 没有自己的参数，沿用前一行的参数。</translation>
    </message>
    <message>
        <source>%1 takes no arguments.</source>
        <translation>%1 不接受参数。</translation>
    </message>
    <message>
        <source>The name of a variable is missing behind the dot.</source>
        <translation>句点后面缺少变量的名称。</translation>
    </message>
    <message>
        <source>Without a value of its own, %1 takes the arguments of the line before.</source>
        <translation>%1 没有自己的值，沿用前一行的参数。</translation>
    </message>
    <message>
        <source>%1 without quotes is nothing: "%2" becomes the empty text.</source>
        <translation>不带引号的 %1 什么也不是：“%2”成为空文字。</translation>
    </message>
    <message>
        <source>Nothing stands here; write "" for an empty text.</source>
        <translation>这里什么也没有；空文字写作 ""。</translation>
    </message>
    <message>
        <source>%1 needs a text.</source>
        <translation>%1 需要一段文字。</translation>
    </message>
    <message>
        <source>The blank beside %1 belongs to the text.</source>
        <translation>%1 旁边的空格属于文字。</translation>
    </message>
    <message>
        <source>%1 takes the text as it stands, with its quotes.</source>
        <translation>%1 原样接受文字，连同引号。</translation>
    </message>
    <message>
        <source>%1 takes the text up to this ":" alone.</source>
        <translation>%1 只取这个“:”之前的文字。</translation>
    </message>
    <message>
        <source>%1 takes %2 arguments; this one is ignored.</source>
        <translation>%1 接受 %2 个参数；这一个被忽略。</translation>
    </message>
    <message>
        <source>A single argument answers for all %1 fields of %2.</source>
        <translation>唯一的参数用于 %2 的全部 %1 个位置。</translation>
    </message>
    <message>
        <source>%1 is missing, which ends the run with the error "Subscript out of range"; write "" for it.</source>
        <translation>缺少 %1，运行因此以错误“下标越界”结束；请写上 ""。</translation>
    </message>
    <message>
        <source>%1 is missing: the result is lost.</source>
        <translation>缺少 %1：结果会丢失。</translation>
    </message>
    <message>
        <source>%1 is missing; what needs it does not happen.</source>
        <translation>缺少 %1；需要它的事情不会发生。</translation>
    </message>
    <message>
        <source>Without %1 %2 does nothing.</source>
        <translation>没有 %1，%2 什么也不做。</translation>
    </message>
    <message>
        <source>Of this head %1.%2 counts; the rest is ignored.</source>
        <translation>这个开头只有 %1.%2 有效；其余的被忽略。</translation>
    </message>
    <message>
        <source>There is no namespace "%1"; the line does nothing.%2</source>
        <translation>没有命名空间“%1”；这一行什么也不做。%2</translation>
    </message>
    <message>
        <source>"%1" is taken as "enter".</source>
        <translation>“%1”被当作“enter”。</translation>
    </message>
    <message>
        <source>"%1" is not the number of a piece, counted from 1.</source>
        <translation>“%1”不是片段的编号（从 1 数起）。</translation>
    </message>
    <message>
        <source>%1 has no command "%2"; the line does nothing.%3</source>
        <translation>%1 没有命令“%2”；这一行什么也不做。%3</translation>
    </message>
    <message>
        <source>Without a command, %1 repeats the word of the line before.</source>
        <translation>没有命令时，%1 重复前一行的命令。</translation>
    </message>
    <message>
        <source>while has "start" and "end" alone; the line does nothing.%1</source>
        <translation>while 只有“start”和“end”；这一行什么也不做。%1</translation>
    </message>
    <message>
        <source>The line begins with a blank, so it has no namespace and does nothing.</source>
        <translation>这一行以空格开头，所以没有命名空间，什么也不做。</translation>
    </message>
    <message>
        <source>A script that is started from a terminal goes on waiting when this is given up with Esc.</source>
        <translation>从终端启动的脚本，在这里用 Esc 放弃之后会一直等待。</translation>
    </message>
    <message>
        <source>%1: nothing stands here; write "" for an empty text.</source>
        <translation>%1：这里什么也没有；空文字写作 ""。</translation>
    </message>
    <message>
        <source>%1: %2 without quotes and without a dot is nothing.</source>
        <translation>%1：不带引号也不带句点的 %2 什么也不是。</translation>
    </message>
    <message>
        <source>this</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <translation>%1：%2。</translation>
    </message>
    <message>
        <source>A wait of 0 does not return at once: it lasts 429 seconds.</source>
        <translation>等待 0 并不立即返回：它持续 429 秒。</translation>
    </message>
    <message>
        <source>file.save takes %1 as a name: it knows no folder by it; os.path_pfold is that folder.</source>
        <translation>file.save 把 %1 当作名称：它不认识这样的文件夹；那个文件夹是 os.path_pfold。</translation>
    </message>
    <message>
        <source>Without a value for "%1" %2 does nothing.</source>
        <translation>“%1”没有值，%2 什么也不做。</translation>
    </message>
    <message>
        <source>%1: the empty text is no value, which ends the run.</source>
        <translation>%1：空文字不是值，运行因此结束。</translation>
    </message>
    <message>
        <source>%1: %2 needs a value here.</source>
        <translation>%1：%2 在这里需要一个值。</translation>
    </message>
    <message>
        <source>Without an action nothing happens when it is found.</source>
        <translation>没有动作，找到时什么也不发生。</translation>
    </message>
    <message>
        <source>"%1" is no action, so the point is stored in a variable of that name.%2</source>
        <translation>“%1”不是动作，所以该点存入这个名称的变量。%2</translation>
    </message>
    <message>
        <source>With an empty %1 %2 does nothing; it takes %3.</source>
        <translation>%1 为空时 %2 什么也不做；它接受 %3。</translation>
    </message>
    <message>
        <source>%1: an empty text is none of %2.</source>
        <translation>%1：空文字不是 %2 之一。</translation>
    </message>
    <message>
        <source>%1: "%2" is none of %3.%4</source>
        <translation>%1：“%2”不是 %3 之一。%4</translation>
    </message>
    <message>
        <source>The name of a variable is missing here.</source>
        <translation>这里缺少变量的名称。</translation>
    </message>
    <message>
        <source>The variable is the one that "%1" names; for the variable itself write "%1".</source>
        <translation>用到的是“%1”的值所指的变量；要用这个变量本身，请写 "%1"。</translation>
    </message>
    <message>
        <source>%1 without quotes is nothing, and the key without a name is Z; write "%2".</source>
        <translation>不带引号的 %1 什么也不是，而没有名称的键是 Z；请写 "%2"。</translation>
    </message>
    <message>
        <source>The key without a name is Z.</source>
        <translation>没有名称的键是 Z。</translation>
    </message>
    <message>
        <source>"z" sends nothing; the key without a name, "", is Z.</source>
        <translation>“z”什么也不发送；没有名称的键 "" 才是 Z。</translation>
    </message>
    <message>
        <source>"%1" sends nothing.%2</source>
        <translation>“%1”什么也不发送。%2</translation>
    </message>
    <message>
        <source>%1 is pressed behind %2, which does not see it any more.</source>
        <translation>%1 在 %2 之后才按下，已经对它不起作用。</translation>
    </message>
    <message>
        <source>No line below releases what this one presses.</source>
        <translation>下面没有一行松开这里按下的键。</translation>
    </message>
    <message>
        <source>This loop lies inside the one of line %1; behind it, the outer one repeats the wrong lines.</source>
        <translation>这个循环在第 %1 行的循环里面；在它之后，外层循环重复的行不对。</translation>
    </message>
    <message>
        <source>while.start wants "count" and a number; nothing is repeated as it stands.</source>
        <translation>while.start 需要“count”和一个数；这样写什么也不重复。</translation>
    </message>
    <message>
        <source>Only "count" repeats; with %1 the lines run once.</source>
        <translation>只有“count”会重复；用 %1 时各行运行一次。</translation>
    </message>
    <message>
        <source>The number of repetitions is missing.</source>
        <translation>缺少重复的次数。</translation>
    </message>
    <message>
        <source>while.start takes 2 arguments; this one is ignored.</source>
        <translation>while.start 接受 2 个参数；这一个被忽略。</translation>
    </message>
    <message>
        <source>A loop repeats 32769 times at most, not %1.</source>
        <translation>循环最多重复 32769 次，不能是 %1 次。</translation>
    </message>
    <message>
        <source>%1 without quotes is nothing, and no number of repetitions.</source>
        <translation>不带引号的 %1 什么也不是，也不是重复的次数。</translation>
    </message>
    <message>
        <source>"%1" is not a number of repetitions.</source>
        <translation>“%1”不是重复的次数。</translation>
    </message>
    <message>
        <source>The lines run once even with a count of %1.</source>
        <translation>即使次数是 %1，各行也运行一次。</translation>
    </message>
    <message>
        <source>No while.start stands above this while.end; it repeats nothing.</source>
        <translation>这个 while.end 上面没有 while.start；它什么也不重复。</translation>
    </message>
    <message>
        <source>Nothing stands in this loop; each repetition forgets all variables.</source>
        <translation>这个循环里什么也没有；每次重复都忘掉所有变量。</translation>
    </message>
    <message>
        <source>After the answer the script goes on to its last line; the loop of line %1 repeats no more.</source>
        <translation>回答之后脚本一直运行到最后一行；第 %1 行的循环不再重复。</translation>
    </message>
    <message>
        <source>No while.end closes this while.start; nothing is repeated.</source>
        <translation>没有 while.end 结束这个 while.start；什么也不重复。</translation>
    </message>
    <message>
        <source>The comma splits this text in spite of its quotes; write _,_ for it.</source>
        <translation>虽有引号，逗号仍会拆开这段文字；请写作 _,_。</translation>
    </message>
    <message>
        <source>The quote of %1 has no partner.</source>
        <translation>%1 的引号没有成对。</translation>
    </message>
    <message>
        <source>The blank in front of %1 belongs to the text.</source>
        <translation>%1 前面的空格属于文字。</translation>
    </message>
    <message>
        <source>The blank beside %1 makes another value of it than meant.</source>
        <translation>%1 旁边的空格使它成了另一个值。</translation>
    </message>
    <message>
        <source>The quotes inside of %1 belong to the text; a comma may be missing.</source>
        <translation>%1 里面的引号属于文字；可能少了一个逗号。</translation>
    </message>
    <message>
        <source>Between quotes +?+ is a text like any other; a template stands without quotes.</source>
        <translation>引号里的 +?+ 只是普通文字；模板不带引号。</translation>
    </message>
    <message>
        <source>Between quotes %1 is a text like any other; for its value leave the quotes out.</source>
        <translation>引号里的 %1 只是普通文字；要用它的值，请去掉引号。</translation>
    </message>
    <message>
        <source>A template ends in +(name) behind its text; this one is taken as it stands.</source>
        <translation>模板在文字后面以 +(名称) 结尾；这一个原样使用。</translation>
    </message>
    <message>
        <source>Quotes count only around the whole of a value, not inside of %1.</source>
        <translation>引号只有包住整个值才有效，在 %1 里面无效。</translation>
    </message>
    <message>
        <source>"%1" is no prefix of a reference, so %2 stands for itself.%3</source>
        <translation>“%1”不是引用的前缀，所以 %2 就是它自己。%3</translation>
    </message>
    <message>
        <source> Did you mean "%1."?</source>
        <translation>是不是想写“%1.”？</translation>
    </message>
    <message>
        <source>%1 stands for itself, since it has a dot; with quotes that is plain to see.</source>
        <translation>%1 有句点，所以就是它自己；加上引号就一目了然。</translation>
    </message>
    <message>
        <source>There is no %1.%2; it is nothing.%3</source>
        <translation>没有 %1.%2；它什么也不是。%3</translation>
    </message>
    <message>
        <source>A template's name is missing; its slot stays empty.</source>
        <translation>模板缺少一个名称；它的空位留空。</translation>
    </message>
    <message>
        <source>%1 is no reference; its slot does not get a variable.</source>
        <translation>%1 不是引用；它的空位得不到变量。</translation>
    </message>
    <message>
        <source>The template has %1 slots (+?+) and %2 names.</source>
        <translation>模板有 %1 个空位（+?+）和 %2 个名称。</translation>
    </message>
    <message>
        <source>Two slots side by side are filled with the same value.</source>
        <translation>相邻的两个空位填入同一个值。</translation>
    </message>
    <message>
        <source>A template stands without quotes; these belong to its text.</source>
        <translation>模板不带引号；这些引号属于它的文字。</translation>
    </message>
    <message>
        <source>%1 holds "%2" here: %3.</source>
        <translation>%1 在这里是“%2”：%3。</translation>
    </message>
    <message>
        <source>expression: %1</source>
        <translation>表达式：%1</translation>
    </message>
    <message>
        <source>Between quotes %1 is a text like any other; for its value write $ in front of them.</source>
        <translation>引号里的 %1 只是普通文字；要用它的值，请在引号前写 $。</translation>
    </message>
    <message>
        <source>the search compares %1 x %2 of its %3 x %4 pixels, from %5,%6</source>
        <translation>搜索从 %5,%6 起比较其 %3 x %4 个像素中的 %1 x %2 个</translation>
    </message>
    <message>
        <source>%1 is no picture that can be read (BMP, ICO, JPEG, GIF, PNG).</source>
        <translation>%1 不是可以读取的图片（BMP、ICO、JPEG、GIF、PNG）。</translation>
    </message>
    <message>
        <source>Of %1 nothing is left to compare (it has one colour, or is too small): it is found at the first place.</source>
        <translation>%1 没有可比较的内容（只有一种颜色，或太小）：在第一个位置就算找到。</translation>
    </message>
    <message>
        <source>%1 does not fit into a region of %2 x %3 pixels; %4.</source>
        <translation>%1 放不进 %2 x %3 像素的区域；%4。</translation>
    </message>
    <message>
        <source>The app's folder has no %1.</source>
        <translation>应用的文件夹里没有 %1。</translation>
    </message>
    <message>
        <source>This path names one person's folder; _pfold_ stands for the app's own.</source>
        <translation>这个路径是某一个人的文件夹；_pfold_ 代表应用自己的文件夹。</translation>
    </message>
    <message>
        <source>This path exists on Windows alone.</source>
        <translation>这个路径只在 Windows 上存在。</translation>
    </message>
    <message>
        <source>This path exists on Linux alone.</source>
        <translation>这个路径只在 Linux 上存在。</translation>
    </message>
    <message>
        <source>Programs end in .exe on Windows alone.</source>
        <translation>只有在 Windows 上程序才以 .exe 结尾。</translation>
    </message>
    <message>
        <source>Whoever gets this app can read what "%1" holds; ask for it instead.</source>
        <translation>得到这个应用的人都能看到“%1”的内容；请改为在运行时询问。</translation>
    </message>
    <message>
        <source> Did you mean "%1%2"?</source>
        <translation>是不是想写“%1%2”？</translation>
    </message>
    <message>
        <source>%1.</source>
        <translation>%1。</translation>
    </message>
    <message>
        <source>%1, -32768 to 32767</source>
        <translation>%1，范围是 -32768 到 32767</translation>
    </message>
    <message>
        <source>%1, -2147483648 to 2147483647</source>
        <translation>%1，范围是 -2147483648 到 2147483647</translation>
    </message>
    <message>
        <source>"%1" has more numbers than count</source>
        <translation>“%1”里有多余的数</translation>
    </message>
    <message>
        <source>"%1" is less than no time</source>
        <translation>“%1”小于零</translation>
    </message>
    <message>
        <source>"%1" has more than the six digits that count</source>
        <translation>“%1”多于有效的六位</translation>
    </message>
    <message>
        <source>"%1" does not begin with http:// or https://</source>
        <translation>“%1”不以 http:// 或 https:// 开头</translation>
    </message>
    <message>
        <source>here it stands for its own name</source>
        <translation>在这里它就是自己的名称</translation>
    </message>
    <message>
        <source>reading it here ends the run</source>
        <translation>在这里读取它会结束运行</translation>
    </message>
    <message>
        <source>"%1" is set only further down; %2.</source>
        <translation>“%1”在更下面才被设置；%2。</translation>
    </message>
    <message>
        <source>"%1" is never set, "%2" is: letter case counts.</source>
        <translation>“%1”从未被设置，被设置的是“%2”：区分大小写。</translation>
    </message>
    <message>
        <source>No line sets "%1"; %2.%3</source>
        <translation>没有一行设置“%1”；%2。%3</translation>
    </message>
    <message>
        <source>No line reads "%1".</source>
        <translation>没有一行读取“%1”。</translation>
    </message>
    <message>
        <source>Write %1</source>
        <translation>改写为 %1</translation>
    </message>
    <message>
        <source>Convert all line ends to CR LF</source>
        <translation>把所有换行改为 CR LF</translation>
    </message>
    <message>
        <source>Remove the blanks in front</source>
        <translation>去掉前面的空格</translation>
    </message>
    <message>
        <source>Write it in quotes</source>
        <translation>加上引号</translation>
    </message>
    <message>
        <source>Write "" for an empty text</source>
        <translation>空文字写作 ""</translation>
    </message>
    <message>
        <source>Write commas in texts as _,_</source>
        <translation>把文字里的逗号写作 _,_</translation>
    </message>
    <message>
        <source>Remove the blanks beside the quotes</source>
        <translation>去掉引号旁边的空格</translation>
    </message>
    <message>
        <source>Close the list of names</source>
        <translation>补上名称列表的右括号</translation>
    </message>
    <message>
        <source>Remove the quotes</source>
        <translation>去掉引号</translation>
    </message>
    <message>
        <source>Close the quotes</source>
        <translation>补上引号</translation>
    </message>
    <message>
        <source>Say nothing of %1 here</source>
        <translation>在这里不提示 %1</translation>
    </message>
    <message>
        <source>This Plum knows the editions 1 and 2 of the language, not %1.</source>
        <translation>这个 Plum 认识语言的第 1 版和第 2 版，不认识第 %1 版。</translation>
    </message>
    <message>
        <source>In edition 2 of the language (//edition:2) mistakes are told before a script runs.</source>
        <translation>在语言的第 2 版（//edition:2）里，错误在脚本运行之前就会指出。</translation>
    </message>
    <message>
        <source>"%1" is no name.</source>
        <translation>“%1”不是名称。</translation>
    </message>
    <message>
        <source>There is "%1" already.</source>
        <translation>已经有“%1”了。</translation>
    </message>
    <message>
        <source>Line %1 means "%2" without its name.</source>
        <translation>第 %1 行没有写出名称，却用到“%2”。</translation>
    </message>
    <message>
        <source>The part "%1" stands in another file.</source>
        <translation>部分“%1”在另一个文件里。</translation>
    </message>
    <message>
        <source>A value decides which variable a line sets, so "%1" may be meant there.</source>
        <translation>有一行设置哪个变量由值决定，那里可能是“%1”。</translation>
    </message>
    <message>
        <source>Line %1 has a mistake, and "%2" in it.</source>
        <translation>第 %1 行有错误，而且用到“%2”。</translation>
    </message>
    <message>
        <source>The lines end in LF alone, so the whole file is one line; save it with CR LF.</source>
        <translation>各行只以 LF 结尾，所以整个文件是一行；请用 CR LF 保存。</translation>
    </message>
    <message>
        <source>A bare LF ends no line here: what follows belongs to the same line; other lines end in CR LF.</source>
        <translation>单独的 LF 在这里不结束一行：后面的内容属于同一行；其他行以 CR LF 结尾。</translation>
    </message>
    <message>
        <source>The file is not UTF-8, as scripts of edition %1 are.</source>
        <translation>文件不是 UTF-8，而第 %1 版的脚本是 UTF-8。</translation>
    </message>
    <message>
        <source>The file is not UTF-8: Linux reads it as GB18030, Windows in its own code page.</source>
        <translation>文件不是 UTF-8：Linux 把它读作 GB18030，Windows 用自己的代码页。</translation>
    </message>
    <message>
        <source>Windows reads a file without the mark of UTF-8 in its own code page, where this character becomes another.</source>
        <translation>没有 UTF-8 标记的文件，Windows 用自己的代码页读取，这个字符会变成别的字符。</translation>
    </message>
    <message>
        <source>Name the rule that is switched off for the next line.</source>
        <translation>请写出对下一行关闭的规则。</translation>
    </message>
    <message>
        <source>There is no rule "%1".%2</source>
        <translation>没有规则“%1”。%2</translation>
    </message>
    <message>
        <source>There is no name here.</source>
        <translation>这里没有名称。</translation>
    </message>
    <message>
        <source>%1 x %2 pixels</source>
        <translation>%1 x %2 像素</translation>
    </message>
    <message>
        <source>Every command of both editions, from the tables that run and check scripts; `plumkit reference` prints this page, and a test holds both together. A field in brackets may be left out; `…` stands behind one that takes several arguments. [Writing apps](scripting.md) says how edition 2 is written, [edition 1](edition-1.md) is written in another way: there an empty field is written `""`, texts, numbers and names stand in quotes.</source>
        <translation>两个版本的全部命令，取自运行和检查脚本所用的表；`plumkit reference` 输出英文的这一页，有测试核对两种语言的命令和参数。方括号里的参数可以省略；`…` 表示可以给出多个参数。[编写应用](scripting.md)说明第 2 版怎样书写，[第 1 版](edition-1.md)的写法不同：在那里空参数写作 `""`，文字、数和名称写在引号里。</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>命令</translation>
    </message>
    <message>
        <source> (edition 1)</source>
        <translation>（第 1 版）</translation>
    </message>
    <message>
        <source> (edition 2)</source>
        <translation>（第 2 版）</translation>
    </message>
    <message>
        <source>, </source>
        <translation>、</translation>
    </message>
    <message>
        <source>; any number of them</source>
        <translation>；个数不限</translation>
    </message>
    <message>
        <source>; empty: %1</source>
        <translation>；为空时：%1</translation>
    </message>
    <message>
        <source>; may be left out</source>
        <translation>；可以省略</translation>
    </message>
</context>
<context>
    <name>plum::CommandWords</name>
    <message>
        <source>Works an expression out: + - * / %, comparisons, min, max, round, length, set.name.</source>
        <translation>计算一个表达式：+ - * / %、比较、min、max、round、length、set.name。</translation>
    </message>
    <message>
        <source>the name of a variable</source>
        <translation>变量的名称</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>Starts a program or opens a document, folder or address; show is empty, hide, min or max.</source>
        <translation>启动程序，或打开文档、文件夹、地址；show 为空、hide、min 或 max。</translation>
    </message>
    <message>
        <source>a path</source>
        <translation>路径</translation>
    </message>
    <message>
        <source>normal</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>Hidden.</source>
        <translation>隐藏。</translation>
    </message>
    <message>
        <source>Minimised.</source>
        <translation>最小化。</translation>
    </message>
    <message>
        <source>Maximised.</source>
        <translation>最大化。</translation>
    </message>
    <message>
        <source>Starts a program hidden; with output html its page appears in the store window, sized w:h.</source>
        <translation>隐藏地启动程序；output 为 html 时，它的页面显示在商店窗口里，尺寸为 w:h。</translation>
    </message>
    <message>
        <source>The store window shows its page.</source>
        <translation>商店窗口显示它的页面。</translation>
    </message>
    <message>
        <source>Calls a function of a JavaScript file or address and stores its value.</source>
        <translation>调用 JavaScript 文件或地址中的一个函数，保存它的值。</translation>
    </message>
    <message>
        <source>Stores a text file: its lines joined, with mode r in reverse order, or the line of a number; in edition 2 with mode all as it is.</source>
        <translation>保存一个文本文件：各行连在一起；mode 为 r 时倒序；为数时是那一行；在第 2 版里 mode 为 all 时原样保存。</translation>
    </message>
    <message>
        <source>joined</source>
        <translation>连在一起</translation>
    </message>
    <message>
        <source>The lines in reverse order.</source>
        <translation>各行倒序。</translation>
    </message>
    <message>
        <source>The text as it is, line ends and all.</source>
        <translation>文字原样，连同换行。</translation>
    </message>
    <message>
        <source>Appends a variable's value as a line, with mode append. Without a mode edition 1 writes nothing and edition 2 replaces the file.</source>
        <translation>mode 为 append 时，把变量的值作为一行加在末尾。没有 mode 时，第 1 版什么也不写，第 2 版替换整个文件。</translation>
    </message>
    <message>
        <source>Adds to the end of the file.</source>
        <translation>加在文件末尾。</translation>
    </message>
    <message>
        <source>Writes a text into a file as it is, in place of what is there or, with mode append, behind it.</source>
        <translation>把文字原样写进文件，代替原有内容；mode 为 append 时加在其后。</translation>
    </message>
    <message>
        <source>Stores 1 where there is such a file or folder, else 0.</source>
        <translation>有这样的文件或文件夹时保存 1，否则保存 0。</translation>
    </message>
    <message>
        <source>Stores the names of a folder's files that fit a pattern such as *.txt, one a line, by name.</source>
        <translation>保存文件夹中符合 *.txt 这类式样的文件名，每行一个，按名称排列。</translation>
    </message>
    <message>
        <source>Moves or renames a file; it replaces none.</source>
        <translation>移动文件或给文件改名；不替换任何文件。</translation>
    </message>
    <message>
        <source>Asks the user; the script goes on with the answer in the variable.</source>
        <translation>询问用户；回答放进变量后脚本继续。</translation>
    </message>
    <message>
        <source>Stores one piece of what was typed after the keyword; the number after enter_ counts from 1.</source>
        <translation>保存关键词之后输入内容的一段；enter_ 后的数从 1 数起。</translation>
    </message>
    <message>
        <source>Stores what was typed after the keyword.</source>
        <translation>保存关键词之后输入的内容。</translation>
    </message>
    <message>
        <source>Stores what a path such as a.b[0] leads to in a JSON text; .length counts an array.</source>
        <translation>保存 JSON 文字中 a.b[0] 这类路径所指的内容；.length 给出数组的元素个数。</translation>
    </message>
    <message>
        <source>the whole text</source>
        <translation>整段文字</translation>
    </message>
    <message>
        <source>Presses all keys in order and then releases them in the same order.</source>
        <translation>依次按下所有键，再按同样的顺序放开。</translation>
    </message>
    <message>
        <source>keys with commas between them</source>
        <translation>以逗号分隔的键</translation>
    </message>
    <message>
        <source>Presses and releases one key after the other.</source>
        <translation>逐个按下并放开各键。</translation>
    </message>
    <message>
        <source>Types a text by pasting it; the clipboard's text is put back afterwards.</source>
        <translation>用粘贴来输入文字；之后剪贴板的文字恢复原样。</translation>
    </message>
    <message>
        <source>Reads a scrambled text and types nothing.</source>
        <translation>读取一段打乱的文字，什么也不输入。</translation>
    </message>
    <message>
        <source>Types a text key by key, in any keyboard layout; the clipboard stays as it is.</source>
        <translation>逐键输入文字，任何键盘布局都可以；剪贴板保持原样。</translation>
    </message>
    <message>
        <source>Presses a key.</source>
        <translation>按下一个键。</translation>
    </message>
    <message>
        <source>a key</source>
        <translation>键</translation>
    </message>
    <message>
        <source>Releases a key.</source>
        <translation>放开一个键。</translation>
    </message>
    <message>
        <source>Hides the launcher window.</source>
        <translation>隐藏启动器窗口。</translation>
    </message>
    <message>
        <source>Clicks the left button.</source>
        <translation>单击左键。</translation>
    </message>
    <message>
        <source>Double-clicks the left button.</source>
        <translation>双击左键。</translation>
    </message>
    <message>
        <source>Moves the pointer; does nothing without a point.</source>
        <translation>移动指针；没有点时什么也不做。</translation>
    </message>
    <message>
        <source>a point x:y</source>
        <translation>点 x:y</translation>
    </message>
    <message>
        <source>Clicks the right button.</source>
        <translation>单击右键。</translation>
    </message>
    <message>
        <source>Stores the pointer's position as x:y.</source>
        <translation>把指针的位置保存为 x:y。</translation>
    </message>
    <message>
        <source>Clicks (kind click) or double-clicks (kind d_click) count times, with a pause after each.</source>
        <translation>单击（kind 为 click）或双击（kind 为 d_click）count 次，每次之后停顿。</translation>
    </message>
    <message>
        <source>without end</source>
        <translation>没有尽头</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>数</translation>
    </message>
    <message>
        <source>Clicks.</source>
        <translation>单击。</translation>
    </message>
    <message>
        <source>Double-clicks.</source>
        <translation>双击。</translation>
    </message>
    <message>
        <source>milliseconds</source>
        <translation>毫秒</translation>
    </message>
    <message>
        <source>Stores the pointer's x.</source>
        <translation>保存指针的 x。</translation>
    </message>
    <message>
        <source>Stores the pointer's y.</source>
        <translation>保存指针的 y。</translation>
    </message>
    <message>
        <source>Moves the pointer by an offset; does nothing without one.</source>
        <translation>把指针移动一段偏移；没有偏移时什么也不做。</translation>
    </message>
    <message>
        <source>an offset dx:dy</source>
        <translation>偏移 dx:dy</translation>
    </message>
    <message>
        <source>Adds the offset to the point and then does the action there: move, click, d_click, tips, or r_click where the pointer is; any other word is the variable that receives the point.</source>
        <translation>把偏移加到点上，然后在那里执行 action：move、click、d_click、tips，或在指针所在处 r_click；其他任何词都是接收该点的变量。</translation>
    </message>
    <message>
        <source>Moves there.</source>
        <translation>移到那里。</translation>
    </message>
    <message>
        <source>Moves there and clicks.</source>
        <translation>移到那里并单击。</translation>
    </message>
    <message>
        <source>Moves there and double-clicks.</source>
        <translation>移到那里并双击。</translation>
    </message>
    <message>
        <source>Right-clicks where the pointer is.</source>
        <translation>在指针所在处右击。</translation>
    </message>
    <message>
        <source>Shows the point in a message.</source>
        <translation>在消息里显示该点。</translation>
    </message>
    <message>
        <source>Drags with the left button from one point to another.</source>
        <translation>用左键从一个点拖到另一个点。</translation>
    </message>
    <message>
        <source>Drags with the left button from a point by an offset.</source>
        <translation>用左键从一个点拖动一段偏移。</translation>
    </message>
    <message>
        <source>Presses the left button.</source>
        <translation>按下左键。</translation>
    </message>
    <message>
        <source>Releases the left button.</source>
        <translation>放开左键。</translation>
    </message>
    <message>
        <source>Presses the right button.</source>
        <translation>按下右键。</translation>
    </message>
    <message>
        <source>Releases the right button.</source>
        <translation>放开右键。</translation>
    </message>
    <message>
        <source>Fetches a page as text; empty when it cannot be had.</source>
        <translation>以文字取得一个页面；取不到时为空。</translation>
    </message>
    <message>
        <source>an address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Accepted, and does nothing.</source>
        <translation>可以写，但什么也不做。</translation>
    </message>
    <message>
        <source>Posts a file as a form and stores the answer, if a variable is given.</source>
        <translation>以表单提交一个文件；给出变量时保存回答。</translation>
    </message>
    <message>
        <source>Hands a download over to the download helper; the script goes on at once.</source>
        <translation>把下载交给下载助手；脚本立刻继续。</translation>
    </message>
    <message>
        <source>the download helper's own</source>
        <translation>下载助手自己的</translation>
    </message>
    <message>
        <source>the last part of the address</source>
        <translation>地址的最后一段</translation>
    </message>
    <message>
        <source>Sends a request, with headers as lines of Name: value, and stores the answer; without a variable for the status, one outside 200 to 299 is an error.</source>
        <translation>发送请求，headers 是“名称: 值”的各行，保存回答；没有给状态的变量时，200 到 299 之外的状态是错误。</translation>
    </message>
    <message>
        <source>Asks for what is there.</source>
        <translation>请求那里的内容。</translation>
    </message>
    <message>
        <source>Hands something over.</source>
        <translation>交上一份内容。</translation>
    </message>
    <message>
        <source>Puts something in the place of what is there.</source>
        <translation>用一份内容代替那里原有的。</translation>
    </message>
    <message>
        <source>Changes a part of what is there.</source>
        <translation>改变那里内容的一部分。</translation>
    </message>
    <message>
        <source>Deletes what is there.</source>
        <translation>删除那里的内容。</translation>
    </message>
    <message>
        <source>Looks for a picture on the screen and acts at its top left corner: click, d_click, r_click where the pointer is, move, get_xy, get_x, get_y, set_clipboard; any other word is the variable that receives the point.</source>
        <translation>在屏幕上找一幅图片，并在它的左上角操作：click、d_click、在指针所在处 r_click、move、get_xy、get_x、get_y、set_clipboard；其他任何词都是接收该点的变量。</translation>
    </message>
    <message>
        <source>the main screen</source>
        <translation>主屏幕</translation>
    </message>
    <message>
        <source>a region x:y:width:height</source>
        <translation>区域 x:y:宽:高</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>什么也不做</translation>
    </message>
    <message>
        <source>Stores the point in tarnwick_xy.</source>
        <translation>把该点保存到 tarnwick_xy。</translation>
    </message>
    <message>
        <source>Stores its x in tarnwick_xy.</source>
        <translation>把它的 x 保存到 tarnwick_xy。</translation>
    </message>
    <message>
        <source>Stores its y in tarnwick_xy.</source>
        <translation>把它的 y 保存到 tarnwick_xy。</translation>
    </message>
    <message>
        <source>Puts the point on the clipboard.</source>
        <translation>把该点放到剪贴板上。</translation>
    </message>
    <message>
        <source>Looks for the first pixel of exactly one colour and acts there as find_pic does.</source>
        <translation>找恰好是某一颜色的第一个像素，并像 find_pic 那样在那里操作。</translation>
    </message>
    <message>
        <source>a colour RRGGBB</source>
        <translation>颜色 RRGGBB</translation>
    </message>
    <message>
        <source>Puts a text on the clipboard in place of all else.</source>
        <translation>把文字放到剪贴板上，代替其余一切。</translation>
    </message>
    <message>
        <source>Stores the clipboard's text.</source>
        <translation>保存剪贴板的文字。</translation>
    </message>
    <message>
        <source>Shows a tip; the script goes on when it is closed.</source>
        <translation>显示提示；关闭后脚本继续。</translation>
    </message>
    <message>
        <source>Locks the screen.</source>
        <translation>锁定屏幕。</translation>
    </message>
    <message>
        <source>Switches the monitor off.</source>
        <translation>关闭显示器。</translation>
    </message>
    <message>
        <source>Ends the session without asking programs.</source>
        <translation>不询问程序就注销。</translation>
    </message>
    <message>
        <source>Switches the machine off without asking programs.</source>
        <translation>不询问程序就关机。</translation>
    </message>
    <message>
        <source>Restarts the machine without asking programs.</source>
        <translation>不询问程序就重新启动。</translation>
    </message>
    <message>
        <source>Runs a program and waits for its end, a minute at most; stores what it wrote and its status. Without a variable for the status, one that is not 0 is an error.</source>
        <translation>运行程序并等它结束，最多一分钟；保存它写出的内容和它的状态。没有给状态的变量时，不是 0 的状态是错误。</translation>
    </message>
    <message>
        <source>Minimises the window with exactly this title, written without quotes.</source>
        <translation>把标题恰好如此的窗口最小化；标题不加引号。</translation>
    </message>
    <message>
        <source>Changes the pause before commands that touch the desktop.</source>
        <translation>改变触及桌面的命令之前的停顿。</translation>
    </message>
    <message>
        <source>Names the lines that follow, so that part.run can run them.</source>
        <translation>给随后的各行命名，使 part.run 可以运行它们。</translation>
    </message>
    <message>
        <source>Leaves the part, with a value.</source>
        <translation>带着一个值离开部分。</translation>
    </message>
    <message>
        <source>Closes part.start.</source>
        <translation>结束 part.start。</translation>
    </message>
    <message>
        <source>Runs a part with a value for each of its arguments and stores what it returns.</source>
        <translation>运行一个部分，给它的每个参数一个值，保存它返回的内容。</translation>
    </message>
    <message>
        <source>Brings the parts of another file of the app.</source>
        <translation>引入应用中另一个文件的各部分。</translation>
    </message>
    <message>
        <source>Shows a page in the browser helper; the script goes on at once.</source>
        <translation>在浏览器助手里显示一个页面；脚本立刻继续。</translation>
    </message>
    <message>
        <source>Repeats the lines that follow; the counter begins at 1.</source>
        <translation>重复随后的各行；计数从 1 开始。</translation>
    </message>
    <message>
        <source>Repeats the lines that follow for each piece of a text between separators.</source>
        <translation>对文字中分隔符之间的每一段重复随后的各行。</translation>
    </message>
    <message>
        <source>a comma</source>
        <translation>逗号</translation>
    </message>
    <message>
        <source>Repeats the lines that follow for each line of a text.</source>
        <translation>对文字的每一行重复随后的各行。</translation>
    </message>
    <message>
        <source>Repeats the lines that follow while this holds.</source>
        <translation>只要条件成立，就重复随后的各行。</translation>
    </message>
    <message>
        <source>The same number, or exactly the same text.</source>
        <translation>同一个数，或完全相同的文字。</translation>
    </message>
    <message>
        <source>Another number or text.</source>
        <translation>别的数或文字。</translation>
    </message>
    <message>
        <source>The text contains the other.</source>
        <translation>文字含有另一段。</translation>
    </message>
    <message>
        <source>The text does not contain the other.</source>
        <translation>文字不含另一段。</translation>
    </message>
    <message>
        <source>The number is larger.</source>
        <translation>数更大。</translation>
    </message>
    <message>
        <source>The number is smaller.</source>
        <translation>数更小。</translation>
    </message>
    <message>
        <source>Nothing stands there.</source>
        <translation>那里什么也没有。</translation>
    </message>
    <message>
        <source>Something stands there.</source>
        <translation>那里有内容。</translation>
    </message>
    <message>
        <source>Goes on with the next repetition.</source>
        <translation>继续下一次重复。</translation>
    </message>
    <message>
        <source>Leaves the repetition.</source>
        <translation>离开重复。</translation>
    </message>
    <message>
        <source>Closes a repetition.</source>
        <translation>结束一个重复。</translation>
    </message>
    <message>
        <source>Gives the variable named after the dot a value.</source>
        <translation>给句点后的变量一个值。</translation>
    </message>
    <message>
        <source>Stores source from the character start on, with find replaced by with at most count times; match is true for the exact letter case, no for any.</source>
        <translation>保存 source 从第 start 个字符起的内容，其中 find 最多 count 次替换为 with；match 为 true 表示区分大小写，no 表示不区分。</translation>
    </message>
    <message>
        <source>all</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>The exact letter case.</source>
        <translation>区分大小写。</translation>
    </message>
    <message>
        <source>Any letter case.</source>
        <translation>不区分大小写。</translation>
    </message>
    <message>
        <source>Stores the pieces between the separators, each in its variable; the last one takes the rest.</source>
        <translation>保存分隔符之间的各段，每段放进自己的变量；最后一个变量取其余全部。</translation>
    </message>
    <message>
        <source>Stores one of the pieces between the separators, counted from 1, or from the end with -1.</source>
        <translation>保存分隔符之间的一段，从 1 数起；用 -1 则从末尾数起。</translation>
    </message>
    <message>
        <source>Stores where a part first stands in a text, counted from 1.</source>
        <translation>保存一段文字在另一段中首次出现的位置，从 1 数起。</translation>
    </message>
    <message>
        <source>Stores a text without the blanks, tabs and line ends around it.</source>
        <translation>保存去掉两端空格、制表符和换行的文字。</translation>
    </message>
    <message>
        <source>Stores a text in capital letters.</source>
        <translation>保存大写的文字。</translation>
    </message>
    <message>
        <source>Stores a text in small letters.</source>
        <translation>保存小写的文字。</translation>
    </message>
    <message>
        <source>Stores what a regular expression finds: its first group, or all of it without groups.</source>
        <translation>保存正则表达式找到的内容：它的第一个组；没有组时是全部。</translation>
    </message>
    <message>
        <source>Waits; in edition 1, 0 waits for 429.4967296 seconds, as it always has.</source>
        <translation>等待；在第 1 版里，0 等待 429.4967296 秒，像以往一样。</translation>
    </message>
    <message>
        <source>Stores the local time as a format such as dd.MM.yyyy says, or with unix the seconds since 1970.</source>
        <translation>按 dd.MM.yyyy 这类格式保存本地时间；格式为 unix 时保存自 1970 年以来的秒数。</translation>
    </message>
    <message>
        <source>Runs the lines that follow up to one that fails.</source>
        <translation>运行随后的各行，直到有一行失败。</translation>
    </message>
    <message>
        <source>Runs the lines that follow when a line before has failed.</source>
        <translation>前面有一行失败时，运行随后的各行。</translation>
    </message>
    <message>
        <source>Closes try.start.</source>
        <translation>结束 try.start。</translation>
    </message>
    <message>
        <source>Waits until a picture is seen and stores where.</source>
        <translation>等到看见图片，保存它在哪里。</translation>
    </message>
    <message>
        <source>Waits until a colour is seen and stores where.</source>
        <translation>等到看见颜色，保存它在哪里。</translation>
    </message>
    <message>
        <source>Waits for a window with exactly this title and stores its handle.</source>
        <translation>等待标题恰好如此的窗口，保存它的编号。</translation>
    </message>
    <message>
        <source>Waits until a window is gone.</source>
        <translation>等到窗口消失。</translation>
    </message>
    <message>
        <source>the number of a window</source>
        <translation>窗口的编号</translation>
    </message>
    <message>
        <source>Waits until a file or a folder is there.</source>
        <translation>等到文件或文件夹出现。</translation>
    </message>
    <message>
        <source>Waits until a part of the screen looks different.</source>
        <translation>等到屏幕的一部分看起来不同。</translation>
    </message>
    <message>
        <source>Shows an address in the browser helper.</source>
        <translation>在浏览器助手里显示一个地址。</translation>
    </message>
    <message>
        <source>Shows a piece of HTML in the browser helper.</source>
        <translation>在浏览器助手里显示一段 HTML。</translation>
    </message>
    <message>
        <source>Runs the lines that follow if this holds.</source>
        <translation>条件成立时运行随后的各行。</translation>
    </message>
    <message>
        <source>Runs the lines that follow if nothing before held and this does.</source>
        <translation>前面的都不成立而这个成立时，运行随后的各行。</translation>
    </message>
    <message>
        <source>Runs the lines that follow if nothing before held.</source>
        <translation>前面的都不成立时，运行随后的各行。</translation>
    </message>
    <message>
        <source>Closes when.start.</source>
        <translation>结束 when.start。</translation>
    </message>
    <message>
        <source>The lines up to while.end run count times, with mode count.</source>
        <translation>mode 为 count 时，到 while.end 为止的各行运行 count 次。</translation>
    </message>
    <message>
        <source>a word</source>
        <translation>词</translation>
    </message>
    <message>
        <source>Ends the lines that are repeated.</source>
        <translation>结束被重复的各行。</translation>
    </message>
    <message>
        <source>Stores a window's handle, or a part of the rectangle of a window with its frame.</source>
        <translation>保存窗口的编号，或窗口连边框的矩形中的一部分。</translation>
    </message>
    <message>
        <source>The window with the keyboard.</source>
        <translation>拥有键盘的窗口。</translation>
    </message>
    <message>
        <source>The window under the pointer.</source>
        <translation>指针下的窗口。</translation>
    </message>
    <message>
        <source>Its top left corner as x:y.</source>
        <translation>它的左上角，写作 x:y。</translation>
    </message>
    <message>
        <source>Its left edge.</source>
        <translation>它的左边缘。</translation>
    </message>
    <message>
        <source>Its top edge.</source>
        <translation>它的上边缘。</translation>
    </message>
    <message>
        <source>The x just right of it.</source>
        <translation>紧靠它右侧的 x。</translation>
    </message>
    <message>
        <source>The y just below it.</source>
        <translation>紧靠它下方的 y。</translation>
    </message>
    <message>
        <source>Its width.</source>
        <translation>它的宽度。</translation>
    </message>
    <message>
        <source>Its height.</source>
        <translation>它的高度。</translation>
    </message>
    <message>
        <source>Changes a window.</source>
        <translation>改变一个窗口。</translation>
    </message>
    <message>
        <source>Asks it to close.</source>
        <translation>要求它关闭。</translation>
    </message>
    <message>
        <source>Brings it to the front.</source>
        <translation>把它带到最前面。</translation>
    </message>
    <message>
        <source>Hides it.</source>
        <translation>隐藏它。</translation>
    </message>
    <message>
        <source>Shows it again.</source>
        <translation>重新显示它。</translation>
    </message>
    <message>
        <source>Minimises it.</source>
        <translation>把它最小化。</translation>
    </message>
    <message>
        <source>Maximises it.</source>
        <translation>把它最大化。</translation>
    </message>
    <message>
        <source>Moves its top left corner.</source>
        <translation>移动它的左上角。</translation>
    </message>
</context>
<context>
    <name>plum::ErrorCause</name>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>“%1”不是数</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of milliseconds</source>
        <translation>“%1”不是毫秒数</translation>
    </message>
    <message>
        <source>%1 is out of range</source>
        <translation>%1 超出范围</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not two hexadecimal digits</source>
        <translation>“%1”不是两位十六进制数字</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a point, x:y</source>
        <translation>“%1”不是点 x:y</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an offset, dx:dy</source>
        <translation>“%1”不是位移 dx:dy</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a region, x:y:width:height</source>
        <translation>“%1”不是区域 x:y:width:height</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the number of a window</source>
        <translation>“%1”不是窗口的编号</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a colour of six hexadecimal digits, RRGGBB</source>
        <translation>“%1”不是六位十六进制数字的颜色 RRGGBB</translation>
    </message>
    <message>
        <source>there is no piece %1</source>
        <translation>没有第 %1 段</translation>
    </message>
    <message>
        <source>the text to look for is empty</source>
        <translation>要找的文字是空的</translation>
    </message>
    <message>
        <source>a text begins with character 1, and a count is 0 or more, or -1 for all</source>
        <translation>文字从第 1 个字符算起，个数为 0 或更大，-1 表示全部</translation>
    </message>
    <message>
        <source>the system has no &quot;%1&quot;</source>
        <translation>系统中没有“%1”</translation>
    </message>
    <message>
        <source>the system has no room for another timer</source>
        <translation>系统无法再建立一个定时器</translation>
    </message>
</context>
<context>
    <name>plum::IndexFault</name>
    <message>
        <source>The store&apos;s signed index could not be fetched. Nothing was installed.</source>
        <translation>取不到商店的签名目录。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s server sent more than an index can be. Nothing was installed.</source>
        <translation>商店服务器发来的内容比目录可能有的还大。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s keys are not vouched for by the key that this Plum was built with. Nothing was installed.</source>
        <translation>这个 Plum 内置的密钥没有为商店的密钥作保。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s new keys are not vouched for by its earlier ones. Nothing was installed.</source>
        <translation>商店先前的密钥没有为它的新密钥作保。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s list of keys has expired: it is out of use, or somebody holds back a newer one. Nothing was installed.</source>
        <translation>商店的密钥清单已过期：它已停用，或者有人扣住了更新的清单。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index is not signed with the store&apos;s keys. Nothing was installed.</source>
        <translation>商店的目录没有用商店的密钥签名。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index cannot be read. Nothing was installed.</source>
        <translation>商店的目录无法读取。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index has expired: the store is out of use, or somebody holds back a newer one. Nothing was installed.</source>
        <translation>商店的目录已过期：商店已停用，或者有人扣住了更新的目录。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index is older than one that was seen before. Nothing was installed.</source>
        <translation>商店的目录比先前见过的还旧。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index is not the one that the store has signed as its newest. Nothing was installed.</source>
        <translation>商店的目录不是商店签名确认的最新目录。没有安装任何东西。</translation>
    </message>
    <message>
        <source>This Plum knows no key of the store. Only a store on this computer may do without. Nothing was installed.</source>
        <translation>这个 Plum 不知道商店的密钥。只有这台电脑上的商店可以没有密钥。没有安装任何东西。</translation>
    </message>
    <message>
        <source>The store&apos;s index does not name this package. It was not installed.</source>
        <translation>商店的目录中没有这个安装包。它没有安装。</translation>
    </message>
    <message>
        <source>This app was written for a newer Plum than this one. It was not installed.</source>
        <translation>这个应用是为更新的 Plum 写的。它没有安装。</translation>
    </message>
    <message>
        <source>The store has taken this package back. It was not installed.</source>
        <translation>商店已撤回这个安装包。它没有安装。</translation>
    </message>
    <message>
        <source>The package has another size than the store has signed. It was not installed.</source>
        <translation>安装包的大小与商店签名的不同。它没有安装。</translation>
    </message>
    <message>
        <source>The package is not the one that the store has signed. It was not installed.</source>
        <translation>安装包不是商店签名的那个。它没有安装。</translation>
    </message>
</context>
<context>
    <name>plum::InstallFault</name>
    <message>
        <source>This app was written for a newer Plum than this one. It was not installed.</source>
        <translation>这个应用是为更新的 Plum 写的。它没有安装。</translation>
    </message>
    <message>
        <source>The package&apos;s name cannot be a keyword.</source>
        <translation>安装包的名称不能作关键词。</translation>
    </message>
    <message>
        <source>The package is not there.</source>
        <translation>安装包不在那里。</translation>
    </message>
    <message>
        <source>The package is write-protected; it is opened for writing too.</source>
        <translation>安装包是写保护的；打开它也需要可写。</translation>
    </message>
    <message>
        <source>This is no package, or only a part of one.</source>
        <translation>这不是安装包，或者只是其中一部分。</translation>
    </message>
    <message>
        <source>There is nothing in the package.</source>
        <translation>安装包是空的。</translation>
    </message>
    <message>
        <source>A file in the package is encrypted or packed in an unknown way.</source>
        <translation>安装包中有文件已加密，或以未知的方式压缩。</translation>
    </message>
    <message>
        <source>A file in the package cannot be put into the app&apos;s folder.</source>
        <translation>安装包中有文件不能放进应用的文件夹。</translation>
    </message>
    <message>
        <source>The package is damaged and was not installed.</source>
        <translation>安装包已损坏，没有安装。</translation>
    </message>
    <message>
        <source>There is no room left on the disk. The package was not installed.</source>
        <translation>磁盘已满。安装包没有安装。</translation>
    </message>
    <message>
        <source>The folder of the apps cannot be changed, or its disk is full.</source>
        <translation>应用的文件夹不能更改，或者磁盘已满。</translation>
    </message>
</context>
<context>
    <name>plum::KeywordFault</name>
    <message>
        <source>This name stands for a device and cannot be a keyword.</source>
        <translation>这个名称代表一个设备，不能作关键词。</translation>
    </message>
    <message>
        <source>A keyword cannot end in a blank or a dot.</source>
        <translation>关键词不能以空格或句点结尾。</translation>
    </message>
    <message>
        <source>This keyword is too long for the name of a folder.</source>
        <translation>这个关键词太长，不能作文件夹的名称。</translation>
    </message>
</context>
<context>
    <name>plum::MistakeWords</name>
    <message>
        <source>&quot;%1&quot; is a bare word; a text stands in quotes</source>
        <translation>“%1”是裸词；文字写在引号里</translation>
    </message>
    <message>
        <source>there is no part %1</source>
        <translation>没有部分 %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a word of this command nor a name</source>
        <translation>“%1”既不是此命令的词，也不是名称</translation>
    </message>
    <message>
        <source>there is no key called &quot;%1&quot;</source>
        <translation>没有名为“%1”的键</translation>
    </message>
    <message>
        <source>%1 is one of %2, not &quot;%3&quot;</source>
        <translation>%1 是 %2 之一，不是“%3”</translation>
    </message>
    <message>
        <source>write %1, not %2: here stands the name of a variable</source>
        <translation>请写 %1，不要写 %2：这里应是变量的名称</translation>
    </message>
    <message>
        <source>%1 is the name of a variable</source>
        <translation>%1 应是变量的名称</translation>
    </message>
    <message>
        <source>this argument is too much</source>
        <translation>这个参数多余</translation>
    </message>
    <message>
        <source>%1 decides what else the line needs and stands there as a word</source>
        <translation>%1 决定这一行还需要什么，要直接写成词</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a bare word; a text stands in quotes, a variable is written set.%1</source>
        <translation>“%1”是裸词；文字写在引号里，变量写作 set.%1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no name of a variable</source>
        <translation>“%1”不是变量的名称</translation>
    </message>
    <message>
        <source>%1 is a number, not &quot;%2&quot;</source>
        <translation>%1 应是数，不是“%2”</translation>
    </message>
    <message>
        <source>%1 is a number of milliseconds, not &quot;%2&quot;</source>
        <translation>%1 应是毫秒数，不是“%2”</translation>
    </message>
    <message>
        <source>%1 is the number of a window, not &quot;%2&quot;</source>
        <translation>%1 应是窗口的编号，不是“%2”</translation>
    </message>
    <message>
        <source>%1 is written x:y, not &quot;%2&quot;</source>
        <translation>%1 写作 x:y，不是“%2”</translation>
    </message>
    <message>
        <source>%1 is written x:y:width:height, not &quot;%2&quot;</source>
        <translation>%1 写作 x:y:width:height，不是“%2”</translation>
    </message>
    <message>
        <source>%1 is written RRGGBB, not &quot;%2&quot;</source>
        <translation>%1 写作 RRGGBB，不是“%2”</translation>
    </message>
    <message>
        <source>a line begins with a command like os.tips, not with &quot;%1&quot;</source>
        <translation>一行以 os.tips 这样的命令开头，不能以“%1”开头</translation>
    </message>
    <message>
        <source>a comma belongs between two arguments</source>
        <translation>两个参数之间要有逗号</translation>
    </message>
    <message>
        <source>this quote is not closed</source>
        <translation>这个引号没有结束</translation>
    </message>
    <message>
        <source>a brace closes that never opened; }} stands for a brace</source>
        <translation>这个花括号没有开始就结束了；}} 代表一个花括号</translation>
    </message>
    <message>
        <source>a name belongs between braces; {{ stands for a brace</source>
        <translation>花括号之间要有名称；{{ 代表一个花括号</translation>
    </message>
    <message>
        <source>a text begins and ends with a quote, or with $ and a quote</source>
        <translation>文字以引号开头和结尾，或者以 $ 加引号开头</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number, point, reference or word; a text stands in quotes</source>
        <translation>“%1”不是数、点、引用或词；文字写在引号里</translation>
    </message>
    <message>
        <source>%1 has no command &quot;%2&quot;</source>
        <translation>%1 没有命令“%2”</translation>
    </message>
    <message>
        <source>while belongs to edition 1; edition 2 repeats with repeat.times</source>
        <translation>while 属于第 1 版；第 2 版用 repeat.times 重复</translation>
    </message>
    <message>
        <source>there is no namespace &quot;%1&quot;</source>
        <translation>没有命名空间“%1”</translation>
    </message>
    <message>
        <source>there is no reference %1</source>
        <translation>没有引用 %1</translation>
    </message>
    <message>
        <source>blocks stand in each other at most %1 deep</source>
        <translation>块最多套 %1 层</translation>
    </message>
    <message>
        <source>a part stands at the top of a script, in no other block</source>
        <translation>部分写在脚本的最外层，不在别的块里</translation>
    </message>
    <message>
        <source>repeat.%1 stands inside a repetition only</source>
        <translation>repeat.%1 只能写在重复里</translation>
    </message>
    <message>
        <source>part.return stands inside a part only</source>
        <translation>part.return 只能写在部分里</translation>
    </message>
    <message>
        <source>part.use stands at the top of a script, in no block</source>
        <translation>part.use 写在脚本的最外层，不在任何块里</translation>
    </message>
    <message>
        <source>%1 stands behind %2.start only</source>
        <translation>%1 只能写在 %2.start 之后</translation>
    </message>
    <message>
        <source>nothing but when.end follows when.else</source>
        <translation>when.else 之后只能是 when.end</translation>
    </message>
    <message>
        <source>a try has one try.failed</source>
        <translation>一个 try 只有一个 try.failed</translation>
    </message>
    <message>
        <source>%1 closes no block</source>
        <translation>%1 没有可结束的块</translation>
    </message>
    <message>
        <source>try.failed is missing before try.end</source>
        <translation>try.end 之前缺少 try.failed</translation>
    </message>
    <message>
        <source>%1.%2 is not closed by %1.end</source>
        <translation>%1.%2 没有用 %1.end 结束</translation>
    </message>
    <message>
        <source>a file that is used holds parts only</source>
        <translation>被使用的文件里只能有部分</translation>
    </message>
    <message>
        <source>%1 has this argument already</source>
        <translation>%1 已经有这个参数</translation>
    </message>
    <message>
        <source>there is a part %1 already</source>
        <translation>已经有部分 %1</translation>
    </message>
    <message>
        <source>part.use names a file in the app&apos;s folder</source>
        <translation>part.use 要写应用文件夹里的一个文件</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 无法读取</translation>
    </message>
    <message>
        <source>this line is no UTF-8</source>
        <translation>这一行不是 UTF-8</translation>
    </message>
    <message>
        <source>this is not one value</source>
        <translation>这不是一个值</translation>
    </message>
    <message>
        <source>%1 was never set</source>
        <translation>%1 从未设定</translation>
    </message>
    <message>
        <source>above and below compare numbers, and &quot;%1&quot; is none</source>
        <translation>above 和 below 比较数，而“%1”不是数</translation>
    </message>
    <message>
        <source>count is a whole number, not %1</source>
        <translation>count 应是整数，不是 %1</translation>
    </message>
    <message>
        <source>parts run each other more than %1 deep</source>
        <translation>部分互相调用超过 %1 层</translation>
    </message>
    <message>
        <source>this script asks for edition %1 of the language, and this Plum knows edition %2 at most</source>
        <translation>这个脚本要求语言的第 %1 版，而这个 Plum 最多懂第 %2 版</translation>
    </message>
    <message>
        <source>part %1 takes %2 value, not %3</source>
        <translation>部分 %1 要 %2 个值，不是 %3 个</translation>
    </message>
    <message>
        <source>part %1 takes %2 values, not %3</source>
        <translation>部分 %1 要 %2 个值，不是 %3 个</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>缺少 %1</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 是空的</translation>
    </message>
    <message>
        <source>%1, line %2, column %3: %4</source>
        <translation>%1，第 %2 行第 %3 列：%4</translation>
    </message>
</context>
<context>
    <name>plum::Program</name>
    <message>
        <source>&quot;%1&quot; is not the path of a script (it does not end in &quot;.wf&quot;); nothing is run.</source>
        <translation>“%1”不是脚本的路径（不以“.wf”结尾）；没有运行任何东西。</translation>
    </message>
    <message>
        <source>cannot read %1; nothing is run.</source>
        <translation>无法读取 %1；没有运行任何东西。</translation>
    </message>
    <message>
        <source>%1 has no CR LF line ends and is therefore one single line.</source>
        <translation>%1 没有 CR LF 行尾，因此只算一行。</translation>
    </message>
</context>
<context>
    <name>plum::Usage</name>
    <message>
        <source>Plum runs small automation scripts, line by line.

  plum               starts the launcher, or fetches the one that runs already
  plum SCRIPT.wf     runs one script and ends with it
  plum -h, --help    shows this text
  plum --version     shows the version

Apps are in         %1/config/apps/
Settings are in     %1/config/load/
The manual is       docs/scripting.md

A script&apos;s lines end in CR LF, in edition 2 also in LF. Holding Esc for 0.7 seconds stops a run, as does &quot;Stop&quot;
in the launcher or in the menu of its tray icon. Ctrl+C stops a run that was started here, with status 130, and
ends one that stays after an error; so does closing the terminal.
</source>
        <translation>Plum 逐行运行小的自动化脚本。

  plum               启动启动器；已在运行时把它叫到前面
  plum SCRIPT.wf     运行一个脚本，随它结束
  plum -h, --help    显示这段文字
  plum --version     显示版本

应用在              %1/config/apps/
设置在              %1/config/load/
手册是              docs/scripting.zh.md

脚本的行以 CR LF 结尾，第 2 版中也可以是 LF。按住 Esc 0.7 秒可停止运行，启动器或托盘图标菜单里的“停止”也可以。
Ctrl+C 停止从这里启动的运行，状态为 130，也结束出错后留下的运行；关闭终端也一样。
</translation>
    </message>
    <message>
        <source>there is no option &quot;%1&quot;; --help shows which there are.</source>
        <translation>没有选项“%1”；--help 显示有哪些选项。</translation>
    </message>
</context>
<context>
    <name>plum::ScriptRuns</name>
    <message>
        <source>The run was stopped.</source>
        <translation>运行被停止了。</translation>
    </message>
    <message>
        <source>%1, line %2:</source>
        <translation>%1，第 %2 行：</translation>
    </message>
</context>
<context>
    <name>plum::DownloadWindow</name>
    <message>
        <source>Sending the request...</source>
        <translation>正在发送请求...</translation>
    </message>
    <message>
        <source>Receiving...</source>
        <translation>正在接收...</translation>
    </message>
    <message>
        <source>Paused.</source>
        <translation>已暂停。</translation>
    </message>
    <message>
        <source>Complete.</source>
        <translation>已完成。</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The file name leads out of the folder. Nothing was downloaded.</source>
        <translation>文件名指向文件夹之外。什么也没有下载。</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>, %1/s</source>
        <translation>，每秒 %1</translation>
    </message>
</context>
<context>
    <name>plum::FileDownload</name>
    <message>
        <source>The server wants a name and a password for this file.</source>
        <translation>服务器要求提供用户名和密码才能下载此文件。</translation>
    </message>
    <message>
        <source>The server does not give this file away.</source>
        <translation>服务器不提供此文件。</translation>
    </message>
    <message>
        <source>The server does not have this file.</source>
        <translation>服务器上没有此文件。</translation>
    </message>
    <message>
        <source>The server does not have this file any more.</source>
        <translation>服务器上已不再有此文件。</translation>
    </message>
    <message>
        <source>The server is asked too often. Try again later.</source>
        <translation>对服务器的请求过于频繁。请稍后再试。</translation>
    </message>
    <message>
        <source>This is no address of a file on the web.</source>
        <translation>这不是网上文件的地址。</translation>
    </message>
    <message>
        <source>The server cannot be reached.</source>
        <translation>无法连接到服务器。</translation>
    </message>
    <message>
        <source>The server could not prove who it is.</source>
        <translation>服务器无法证明自己的身份。</translation>
    </message>
    <message>
        <source>The server says nothing any more.</source>
        <translation>服务器不再有回应。</translation>
    </message>
    <message>
        <source>The connection broke.</source>
        <translation>连接中断了。</translation>
    </message>
    <message>
        <source>What answers there is no web server.</source>
        <translation>那里应答的不是网页服务器。</translation>
    </message>
    <message>
        <source>The address leads round in circles or to where no file can be fetched.</source>
        <translation>该地址转来转去回到原处，或指向无法取得文件的地方。</translation>
    </message>
    <message>
        <source>The server has a problem of its own (%1).</source>
        <translation>服务器自身出了问题（%1）。</translation>
    </message>
    <message>
        <source>The server does not give this file (%1).</source>
        <translation>服务器不提供此文件（%1）。</translation>
    </message>
    <message>
        <source>The file cannot be written.</source>
        <translation>无法写入文件。</translation>
    </message>
    <message>
        <source>There is no room left on the disk.</source>
        <translation>磁盘空间已满。</translation>
    </message>
    <message>
        <source>The finished file could not be put in its place.</source>
        <translation>下载完成的文件无法放到应放的位置。</translation>
    </message>
</context>
<context>
    <name>plum::FlightWords</name>
    <message>
        <source>before</source>
        <translation>之前</translation>
    </message>
    <message>
        <source>after</source>
        <translation>之后</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Before and after each line: what was around the pointer, or what a search saw. One picture: nothing had changed.</source>
        <translation>每一行之前和之后：指针周围的画面，或一次查找所看到的画面。只有一张图片：没有变化。</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>等待</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>goes on</source>
        <translation>仍在继续</translation>
    </message>
    <message>
        <source>%1 before these</source>
        <translation>此前还有 %1 项</translation>
    </message>
    <message>
        <source>%1 lines that only compute were not written down</source>
        <translation>%1 行只做计算，没有记录</translation>
    </message>
    <message>
        <source>Time line, %1 s</source>
        <translation>时间线，%1 秒</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>第 %1 行</translation>
    </message>
    <message>
        <source>The run is done, or goes on.</source>
        <translation>运行已完成，或仍在继续。</translation>
    </message>
    <message>
        <source>What happened: %1</source>
        <translation>发生了什么：%1</translation>
    </message>
    <message>
        <source>en</source>
        <extracomment>The language of the page, as HTML names it.</extracomment>
        <translation>zh-CN</translation>
    </message>
    <message>
        <source>No line has been carried out.</source>
        <translation>没有执行过任何一行。</translation>
    </message>
    <message>
        <source>%1 earlier lines were given up for these.</source>
        <translation>为记下这些，更早的 %1 行已舍去。</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>脚本</translation>
    </message>
    <message>
        <source>Came to</source>
        <translation>得到</translation>
    </message>
    <message>
        <source>Did</source>
        <translation>做了</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>设置了</translation>
    </message>
    <message>
        <source>button left down</source>
        <translation>鼠标左键按下</translation>
    </message>
    <message>
        <source>button left up</source>
        <translation>鼠标左键放开</translation>
    </message>
    <message>
        <source>button right down</source>
        <translation>鼠标右键按下</translation>
    </message>
    <message>
        <source>button right up</source>
        <translation>鼠标右键放开</translation>
    </message>
    <message>
        <source>clipboard read: %1 characters, %2</source>
        <translation>读取剪贴板：%1 个字符，%2</translation>
    </message>
    <message>
        <source>clipboard set: %1 characters, %2</source>
        <translation>写入剪贴板：%1 个字符，%2</translation>
    </message>
    <message>
        <source>clipboard cleared</source>
        <translation>清空剪贴板</translation>
    </message>
    <message>
        <source>JavaScript of %1 characters: evaluated</source>
        <translation>%1 个字符的 JavaScript：已求值</translation>
    </message>
    <message>
        <source>JavaScript of %1 characters: failed, %2</source>
        <translation>%1 个字符的 JavaScript：失败，%2</translation>
    </message>
    <message>
        <source>key %1 down</source>
        <translation>按键 %1 按下</translation>
    </message>
    <message>
        <source>key %1 up</source>
        <translation>按键 %1 放开</translation>
    </message>
    <message>
        <source>typed %1 characters</source>
        <translation>输入了 %1 个字符</translation>
    </message>
    <message>
        <source>every key let go</source>
        <translation>放开所有按键</translation>
    </message>
    <message>
        <source>pointer to %1:%2</source>
        <translation>指针移到 %1:%2</translation>
    </message>
    <message>
        <source>every button let go</source>
        <translation>放开所有鼠标键</translation>
    </message>
    <message>
        <source>screen locked</source>
        <translation>锁定屏幕</translation>
    </message>
    <message>
        <source>screen locked (not possible)</source>
        <translation>锁定屏幕（无法做到）</translation>
    </message>
    <message>
        <source>monitor switched off</source>
        <translation>关闭显示器</translation>
    </message>
    <message>
        <source>monitor switched off (not possible)</source>
        <translation>关闭显示器（无法做到）</translation>
    </message>
    <message>
        <source>log off</source>
        <translation>注销</translation>
    </message>
    <message>
        <source>shut down</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>restart</source>
        <translation>重新启动</translation>
    </message>
    <message>
        <source>window %1 asked to close</source>
        <translation>窗口 %1 被要求关闭</translation>
    </message>
    <message>
        <source>window %1 activated</source>
        <translation>窗口 %1 被激活</translation>
    </message>
    <message>
        <source>window %1 hidden</source>
        <translation>窗口 %1 被隐藏</translation>
    </message>
    <message>
        <source>window %1 shown</source>
        <translation>窗口 %1 被显示</translation>
    </message>
    <message>
        <source>window %1 minimised</source>
        <translation>窗口 %1 被最小化</translation>
    </message>
    <message>
        <source>window %1 maximised</source>
        <translation>窗口 %1 被最大化</translation>
    </message>
    <message>
        <source>window %1 fetched to this desktop</source>
        <translation>窗口 %1 被带到此桌面</translation>
    </message>
    <message>
        <source>window %1 kept above all others</source>
        <translation>窗口 %1 保持在最前</translation>
    </message>
    <message>
        <source>window %1 moved to %2:%3</source>
        <translation>窗口 %1 移到 %2:%3</translation>
    </message>
    <message>
        <source>opened %1</source>
        <translation>打开 %1</translation>
    </message>
    <message>
        <source>opened %1 (failed)</source>
        <translation>打开 %1（失败）</translation>
    </message>
    <message>
        <source>started %1</source>
        <translation>启动 %1</translation>
    </message>
    <message>
        <source>started %1 (failed)</source>
        <translation>启动 %1（失败）</translation>
    </message>
    <message>
        <source>nearest miss at %1: %2 of %3 pixels differ (red %4, green %5, blue %6), in the picture at %7</source>
        <translation>最接近之处在 %1：%3 个像素中有 %2 个不同（红 %4、绿 %5、蓝 %6），在图片的 %7</translation>
    </message>
    <message>
        <source>another run begins: %1</source>
        <translation>另一次运行开始：%1</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>被拒绝：%1</translation>
    </message>
    <message>
        <source>colour %1 in %2: seen at %3</source>
        <translation>%2 中的颜色 %1：在 %3 看到</translation>
    </message>
    <message>
        <source>colour %1 in %2: not seen</source>
        <translation>%2 中的颜色 %1：没有看到</translation>
    </message>
    <message>
        <source>picture %1 in %2: seen at %3</source>
        <translation>%2 中的图片 %1：在 %3 看到</translation>
    </message>
    <message>
        <source>picture %1 in %2: not seen</source>
        <translation>%2 中的图片 %1：没有看到</translation>
    </message>
    <message>
        <source>nothing in there is like it</source>
        <translation>其中没有与之相似的</translation>
    </message>
    <message>
        <source>stop asked for</source>
        <translation>要求停止</translation>
    </message>
</context>
<context>
    <name>plum::Reason</name>
    <message>
        <source>%1 cannot be opened</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>%1 cannot be started</source>
        <translation>无法启动 %1</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 无法读取</translation>
    </message>
    <message>
        <source>%1 was never set</source>
        <translation>%1 从未设定</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>无法写入 %1</translation>
    </message>
    <message>
        <source>there is no folder %1</source>
        <translation>没有文件夹 %1</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>没有文件 %1</translation>
    </message>
    <message>
        <source>%1 is there already</source>
        <translation>%1 已经存在</translation>
    </message>
    <message>
        <source>%1 cannot be moved to %2</source>
        <translation>无法把 %1 移到 %2</translation>
    </message>
    <message>
        <source>there is no key called &quot;%1&quot;</source>
        <translation>没有名为“%1”的键</translation>
    </message>
    <message>
        <source>the text holds a character that no key types</source>
        <translation>文字中有按键无法输入的字符</translation>
    </message>
    <message>
        <source>the download helper does not start: %1</source>
        <translation>下载助手无法启动：%1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no method</source>
        <translation>“%1”不是请求方法</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no header</source>
        <translation>“%1”不是请求头</translation>
    </message>
    <message>
        <source>nothing answers at %1 within %2 ms</source>
        <translation>%1 在 %2 毫秒内没有应答</translation>
    </message>
    <message>
        <source>%1 answers with status %2</source>
        <translation>%1 应答的状态为 %2</translation>
    </message>
    <message>
        <source>there is no picture %1</source>
        <translation>没有图片 %1</translation>
    </message>
    <message>
        <source>the picture %1 is not on the screen</source>
        <translation>屏幕上没有图片 %1</translation>
    </message>
    <message>
        <source>the colour %1 is not on the screen</source>
        <translation>屏幕上没有颜色 %1</translation>
    </message>
    <message>
        <source>the screen was not locked: no service on this machine locks it</source>
        <translation>屏幕没有锁定：这台计算机上没有锁屏服务</translation>
    </message>
    <message>
        <source>the monitor was not switched off: this display has no power control</source>
        <translation>显示器没有关闭：此显示无法控制电源</translation>
    </message>
    <message>
        <source>%1 did not end within %2 s</source>
        <translation>%1 在 %2 秒内没有结束</translation>
    </message>
    <message>
        <source>%1 wrote more than %2 MB</source>
        <translation>%1 写出的内容超过 %2 MB</translation>
    </message>
    <message>
        <source>%1 ended with status %2</source>
        <translation>%1 以状态 %2 结束</translation>
    </message>
    <message>
        <source>there is no window with the title &quot;%1&quot;</source>
        <translation>没有标题为“%1”的窗口</translation>
    </message>
    <message>
        <source>the browser helper does not start: %1</source>
        <translation>浏览器助手无法启动：%1</translation>
    </message>
    <message>
        <source>the window %1 is gone</source>
        <translation>窗口 %1 已消失</translation>
    </message>
    <message>
        <source>there is no such window</source>
        <translation>没有这样的窗口</translation>
    </message>
    <message>
        <source>there is no piece %1 of what was typed behind the keyword</source>
        <translation>关键词之后的输入没有第 %1 段</translation>
    </message>
    <message>
        <source>the separator is empty</source>
        <translation>分隔符是空的</translation>
    </message>
    <message>
        <source>there are %1 pieces for %2 variables</source>
        <translation>有 %1 段，却有 %2 个变量</translation>
    </message>
    <message>
        <source>there is no piece %1; there are %2</source>
        <translation>没有第 %1 段；共有 %2 段</translation>
    </message>
    <message>
        <source>the text does not hold &quot;%1&quot;</source>
        <translation>文字中没有“%1”</translation>
    </message>
    <message>
        <source>the pattern is wrong at character %1: %2</source>
        <translation>正则表达式在第 %1 个字符处有误：%2</translation>
    </message>
    <message>
        <source>the text does not match %1</source>
        <translation>文字与 %1 不匹配</translation>
    </message>
    <message>
        <source>the pattern takes too long for this text</source>
        <translation>该正则表达式对这段文字耗时过长</translation>
    </message>
    <message>
        <source>not allowed for %1: %2</source>
        <translation>不允许 %1 这样做：%2</translation>
    </message>
    <message>
        <source>whoever a page leads to</source>
        <translation>页面通向的任何一方</translation>
    </message>
    <message>
        <source>nothing answers at %1</source>
        <translation>%1 没有应答</translation>
    </message>
    <message>
        <source>The value is no text.</source>
        <translation>该值不是文字。</translation>
    </message>
    <message>
        <source>The script failed.</source>
        <translation>脚本失败了。</translation>
    </message>
    <message>
        <source>The evaluation was given up.</source>
        <translation>求值已放弃。</translation>
    </message>
    <message>
        <source>This system has no script engine.</source>
        <translation>此系统没有脚本引擎。</translation>
    </message>
    <message>
        <source>it asks for edition %1 of the language</source>
        <translation>它要求语言的第 %1 版</translation>
    </message>
    <message>
        <source>%1, at character %2 of the expression</source>
        <translation>%1，在表达式的第 %2 个字符处</translation>
    </message>
    <message>
        <source>an operator is missing before &quot;%1&quot;</source>
        <translation>“%1”之前缺少运算符</translation>
    </message>
    <message>
        <source>the expression is nested too deeply</source>
        <translation>表达式嵌套过深</translation>
    </message>
    <message>
        <source>division by zero</source>
        <translation>除数为零</translation>
    </message>
    <message>
        <source>a number is missing</source>
        <translation>缺少数字</translation>
    </message>
    <message>
        <source>a number is missing before &quot;%1&quot;</source>
        <translation>“%1”之前缺少数字</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>“%1”不是数</translation>
    </message>
    <message>
        <source>%1 is &quot;%2&quot;, which is not a number</source>
        <translation>%1 是“%2”，不是数字</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;</source>
        <translation>没有函数“%1”</translation>
    </message>
    <message>
        <source>length takes one reference, such as set.name</source>
        <translation>length 要一个引用，例如 set.name</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no reference; write set.%1</source>
        <translation>“%1”不是引用；请写 set.%1</translation>
    </message>
    <message>
        <source>a &quot;)&quot; is missing</source>
        <translation>缺少“)”</translation>
    </message>
    <message>
        <source>a &quot;)&quot; is missing before &quot;%1&quot;</source>
        <translation>“%1”之前缺少“)”</translation>
    </message>
    <message>
        <source>the result is too large</source>
        <translation>结果过大</translation>
    </message>
    <message>
        <source>the path makes no sense from &quot;%1&quot; on</source>
        <translation>路径从“%1”起没有意义</translation>
    </message>
    <message>
        <source>the text is not JSON</source>
        <translation>文字不是 JSON</translation>
    </message>
    <message>
        <source>there is no %1 (path %2)</source>
        <translation>没有 %1（路径 %2）</translation>
    </message>
    <message>
        <source>%1 within %2 ms</source>
        <translation>%2 毫秒内%1</translation>
    </message>
    <message>
        <source>no window had the title &quot;%1&quot;</source>
        <translation>没有标题为“%1”的窗口</translation>
    </message>
    <message>
        <source>the window %1 did not go</source>
        <translation>窗口 %1 没有消失</translation>
    </message>
    <message>
        <source>%1 cannot be waited for</source>
        <translation>无法等待 %1</translation>
    </message>
    <message>
        <source>%1 did not come</source>
        <translation>%1 没有出现</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>round takes 0 to 15 digits</source>
        <translation>round 要 0 到 15 位数</translation>
    </message>
    <message>
        <source>element %1</source>
        <translation>元素 %1</translation>
    </message>
    <message>
        <source>the picture %1 was not seen</source>
        <translation>没有看到图片 %1</translation>
    </message>
    <message>
        <source>the colour %1 was not seen</source>
        <translation>没有看到颜色 %1</translation>
    </message>
    <message>
        <source>nothing changed</source>
        <translation>没有任何变化</translation>
    </message>
</context>
<context>
    <name>plum::RunTimeError</name>
    <message>
        <source>Invalid procedure call or argument</source>
        <translation>无效的过程调用或参数</translation>
    </message>
    <message>
        <source>Overflow</source>
        <translation>溢出</translation>
    </message>
    <message>
        <source>Subscript out of range</source>
        <translation>下标越界</translation>
    </message>
    <message>
        <source>Division by zero</source>
        <translation>除数为零</translation>
    </message>
    <message>
        <source>Type mismatch</source>
        <translation>类型不匹配</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>找不到文件</translation>
    </message>
</context>
<context>
    <name>plum::PickWindow</name>
    <message>
        <source>Pick</source>
        <translation>选取</translation>
    </message>
</context>
<context>
    <name>plum::Picker</name>
    <message>
        <source>Point %1</source>
        <translation>点 %1</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>颜色 %1</translation>
    </message>
    <message>
        <source>No window</source>
        <translation>没有窗口</translation>
    </message>
    <message>
        <source>Window "%1", handle %2</source>
        <translation>窗口“%1”，句柄 %2</translation>
    </message>
    <message>
        <source>Its corner %1, from there %2</source>
        <translation>左上角 %1，从那里算起 %2</translation>
    </message>
    <message>
        <source>Enter takes a picture of %1 x %2 pixels</source>
        <translation>回车截取 %1 x %2 像素的图片</translation>
    </message>
    <message>
        <source>Enter sets the first corner of a picture</source>
        <translation>回车设定图片的第一个角</translation>
    </message>
    <message>
        <source>Enter writes %1</source>
        <translation>回车写入 %1</translation>
    </message>
    <message>
        <source>Tab: another line · Space: a corner of a picture · Esc: give up</source>
        <translation>Tab：换一行 · 空格：图片的一角 · Esc：放弃</translation>
    </message>
    <message>
        <source>The picture cannot be written into %1.</source>
        <translation>图片无法写入 %1。</translation>
    </message>
    <message>
        <source>Nothing of it is left to compare: it has one colour or is too small, and is found at the first place.</source>
        <translation>没有可比较的部分：它只有一种颜色或太小，在第一个位置就会“找到”。</translation>
    </message>
    <message>
        <source>The search compares %1 pixels of the %2 x %3 from %4:%5; red may be off by %6, green by %7, blue does not count.</source>
        <translation>从 %4:%5 起比较 %2 x %3 中的 %1 个像素；红色可差 %6，绿色可差 %7，蓝色不计。</translation>
    </message>
    <message>
        <source>It is not found on the main screen.</source>
        <translation>在主屏幕上没有找到。</translation>
    </message>
    <message>
        <source>It is found once on this screen.</source>
        <translation>在此屏幕上找到一次。</translation>
    </message>
    <message>
        <source>It is found %1 times on this screen; the first one counts.</source>
        <translation>在此屏幕上找到 %1 次；以第一处为准。</translation>
    </message>
    <message>
        <source>It is found a hundred times and more on this screen; the first one counts.</source>
        <translation>在此屏幕上找到一百次以上；以第一处为准。</translation>
    </message>
    <message>
        <source>The most similar other place differs in %1 of %2 pixels, at %3:%4.</source>
        <translation>最相似的另一处在 %3:%4，%2 个像素中有 %1 个不同。</translation>
    </message>
    <message>
        <source>No other place is like it.</source>
        <translation>没有其他相似之处。</translation>
    </message>
    <message>
        <source>A picture is kept in the folder of its app: save the app first.</source>
        <translation>图片存放在应用的文件夹里：请先保存应用。</translation>
    </message>
    <message>
        <source>There is no desktop that can be looked at.</source>
        <translation>没有可以查看的桌面。</translation>
    </message>
</context>
</TS>
