<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>CLS_DemoWindow</name>
    <message>
        <source>WgtTreeWidget demo</source>
        <translation>WgtTreeWidget 演示</translation>
    </message>
    <message>
        <source>Event log</source>
        <translation>事件日志</translation>
    </message>
    <message>
        <source>Custom tree (check, drag to reorder)</source>
        <translation>自定义树（勾选，拖动排序）</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>收藏夹</translation>
    </message>
    <message>
        <source>All channels</source>
        <translation>全部通道</translation>
    </message>
    <message>
        <source>On line</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Off line</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Status filter</source>
        <translation>状态筛选</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>资源</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>显示：</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>布局</translation>
    </message>
    <message>
        <source>layout: %1 of %2 dragged rows added</source>
        <translation>布局：拖入 %2 行，添加了 %1 行</translation>
    </message>
    <message>
        <source>Layout (drop cameras here)</source>
        <translation>布局（将摄像机拖到此处）</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>事件</translation>
    </message>
    <message>
        <source>double click: %1</source>
        <translation>双击：%1</translation>
    </message>
    <message>
        <source>favourite selected: %1</source>
        <translation>已选收藏：%1</translation>
    </message>
    <message>
        <source>the saved view of the resource tree could not be read</source>
        <translation>无法读取资源树保存的视图</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Open the live view</source>
        <translation>打开实时画面</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>回放</translation>
    </message>
    <message>
        <source>Play the recordings back</source>
        <translation>回放录像</translation>
    </message>
    <message>
        <source>the device layer gives no resource tree</source>
        <translation>设备层未提供资源树</translation>
    </message>
    <message>
        <source>the device layer lists no resource</source>
        <translation>设备层中没有资源</translation>
    </message>
    <message>
        <source>All resources</source>
        <translation>全部资源</translation>
    </message>
    <message>
        <source>the resource tree could not be built</source>
        <translation>无法构建资源树</translation>
    </message>
    <message>
        <source>Custom tree</source>
        <translation>自定义树</translation>
    </message>
    <message>
        <source>no custom tree in this installation</source>
        <translation>此安装中没有自定义树</translation>
    </message>
    <message>
        <source>no favourites in this installation</source>
        <translation>此安装中没有收藏</translation>
    </message>
    <message>
        <source>installation: %1 hosts, %2 channels, %3 rows</source>
        <translation>安装：%1 台主机，%2 个通道，%3 行</translation>
    </message>
    <message>
        <source>status batch %1: %2 channels, %3 on, %4 off</source>
        <translation>状态批次 %1：%2 个通道，%3 个在线，%4 个离线</translation>
    </message>
    <message>
        <source>menu: %1 on %2%3</source>
        <translation>菜单：%2 的 %1%3</translation>
    </message>
    <message>
        <source> (checked)</source>
        <translation>（已勾选）</translation>
    </message>
    <message>
        <source>check batch of %1: %2</source>
        <translation>勾选变化 %1 项：%2</translation>
    </message>
    <message>
        <source>screen scale %1, no application hub to tell</source>
        <translation>屏幕缩放 %1，没有可通知的应用信号中心</translation>
    </message>
    <message>
        <source>screen scale %1: SignResizeView sent</source>
        <translation>屏幕缩放 %1：已发送 SignResizeView</translation>
    </message>
    <message>
        <source>%1 hosts  ·  %2 channels, %3 on line  ·  %4 status batches  ·  %5 simulated changes</source>
        <translation>%1 台主机  ·  %2 个通道，%3 个在线  ·  %4 个状态批次  ·  %5 次模拟变化</translation>
    </message>
    <message>
        <source>Preview all channels</source>
        <translation>预览全部通道</translation>
    </message>
    <message>
        <source>Open preview</source>
        <translation>打开预览</translation>
    </message>
    <message>
        <source>View</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>Show channel numbers</source>
        <translation>显示通道号</translation>
    </message>
    <message>
        <source>Show off-line channels</source>
        <translation>显示离线通道</translation>
    </message>
    <message>
        <source>Expand all</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>Collapse all</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>Refresh states</source>
        <translation>刷新状态</translation>
    </message>
    <message>
        <source>Remote configuration</source>
        <translation>远程配置</translation>
    </message>
</context>
</TS>
