<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>plum::EditPanel</name>
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
</context>
<context>
    <name>plum::KeywordList</name>
    <message>
        <source>Apps</source>
        <translation>应用</translation>
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
</context>
<context>
    <name>plum::LauncherUi</name>
    <message>
        <source>Dropped: %1</source>
        <translation>已放入：%1</translation>
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
    <name>plum::ScriptEditor</name>
    <message>
        <source>Script</source>
        <translation>脚本</translation>
    </message>
</context>
<context>
    <name>plum::frmSet</name>
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
        <source>Letter</source>
        <translation>字母</translation>
    </message>
    <message>
        <source>Switches the hotkey off while you choose, and on again</source>
        <translation>选择时停用热键，之后重新启用</translation>
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
        <source>The hotkey is on.</source>
        <translation>热键已启用。</translation>
    </message>
    <message>
        <source>No hotkey is on. Choose a modifier and a letter.</source>
        <translation>没有启用热键。请选择修饰键和字母。</translation>
    </message>
</context>
<context>
    <name>plum::sett</name>
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
        <source>End at once</source>
        <translation>立即结束</translation>
    </message>
    <message>
        <source>On the web</source>
        <translation>网页</translation>
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
</context>
</TS>
