pragma Singleton
import QtQuick

// The icons of the program: the inside of an SVG on a grid of 24, with round strokes and a margin of
// 2. "currentColor" fills; strokes take on the colour by themselves. Names that end in "Fill" are
// the solid forms.
QtObject {
    function get(name: string): string {
        return icons[name] ?? icons.square
    }

    // Two folded blades, on a grid of 18 and in colours of their own.
    readonly property string mark: "<path d='M1.200 2.740H4.820L10.920 15.960H7.190z' fill='#5B78FB' stroke='#5B78FB' stroke-width='.9'/><path d='M13.180 2.740H16.800L11.830 13.470 10.070 9.460z' fill='#E5631A' stroke='#E5631A' stroke-width='.9'/>"

    readonly property var icons: ({
        // composer and chat
        send: "<path d='M12 19V5.5M6 11l6-6 6 6'/>",
        stop: "<rect x='6.5' y='6.5' width='11' height='11' rx='3' fill='currentColor' stroke='none'/>",
        plus: "<path d='M12 5v14M5 12h14'/>",
        close: "<path d='M6.5 6.5l11 11M17.5 6.5l-11 11'/>",
        clip: "<path d='M19.5 11.2l-7.6 7.6a4.6 4.6 0 0 1-6.5-6.5l7.9-7.9a3.1 3.1 0 0 1 4.4 4.4l-7.8 7.8a1.6 1.6 0 0 1-2.2-2.2l7-7'/>",
        photo: "<rect x='3.5' y='4.5' width='17' height='15' rx='3.5'/><circle cx='8.8' cy='9.6' r='1.5'/><path d='M4.2 17.2l4.6-4.1 3.1 2.6 3.9-3.9 4.4 4.2'/>",
        doc: "<path d='M13.5 3.5H8A2.5 2.5 0 0 0 5.5 6v12A2.5 2.5 0 0 0 8 20.500h8a2.5 2.5 0 0 0 2.5-2.500V8.500z'/><path d='M13.5 3.700V8.500h4.800M9 12.500h6M9 16h4'/>",
        note: "<path d='M4.5 7A2.5 2.5 0 0 1 7 4.500h10A2.5 2.5 0 0 1 19.5 7v6.500l-6 6H7A2.5 2.5 0 0 1 4.5 17z'/><path d='M19.3 13.500H16a2.5 2.5 0 0 0-2.5 2.500v3.300M8.5 9h7M8.5 12.500h3'/>",
        deepen: "<path d='M5 5h14M7.5 9.200h9M12 12.500v7M8.8 16.600l3.2 3.2 3.2-3.2'/>",
        sparkles: "<path d='M10.5 4.500c.7 4.3 2.2 5.8 6.5 6.5-4.3.7-5.8 2.2-6.5 6.5-.7-4.3-2.2-5.8-6.5-6.5 4.3-.7 5.8-2.2 6.5-6.500z'/><path d='M18.3 15.200c.3 1.9 1 2.6 2.9 2.9-1.9.3-2.6 1-2.9 2.9-.3-1.9-1-2.6-2.9-2.9 1.9-.3 2.6-1 2.9-2.900z' fill='currentColor' stroke-width='.6'/>",
        list: "<path d='M9.5 6.500H20M9.5 12H20M9.5 17.500H20'/><circle cx='5' cy='6.5' r='1.3' fill='currentColor' stroke='none'/><circle cx='5' cy='12' r='1.3' fill='currentColor' stroke='none'/><circle cx='5' cy='17.5' r='1.3' fill='currentColor' stroke='none'/>",
        cap: "<path d='M12 5L2.8 9.5 12 14l9.2-4.500z'/><path d='M6.5 11.500v4.300c0 1.5 2.6 2.9 5.5 2.900s5.5-1.4 5.5-2.900v-4.300M21 9.700v5.3'/>",
        capFill: "<path d='M12 4.600L2 9.500l10 4.9 10-4.900z' fill='currentColor' stroke-width='.8'/><path d='M6.5 13.600v2.700c0 1.3 2.5 2.7 5.5 2.700s5.5-1.4 5.5-2.700v-2.700L12 16.300z' fill='currentColor' stroke-width='.8'/><path d='M21.1 10v5'/>",
        bulb: "<path d='M9.3 17.200c0-1.7-.5-2.4-1.5-3.500A5.9 5.9 0 0 1 12 3.800a5.9 5.9 0 0 1 4.2 9.900c-1 1.1-1.5 1.8-1.5 3.500zM10 20.300h4'/>",
        bulbFill: "<path d='M9.3 17.200c0-1.7-.5-2.4-1.5-3.500A5.9 5.9 0 0 1 12 3.800a5.9 5.9 0 0 1 4.2 9.900c-1 1.1-1.5 1.8-1.5 3.500z' fill='currentColor' stroke-width='1'/><path d='M10 20.300h4'/>",
        copy: "<rect x='8.5' y='8.5' width='11.5' height='11.5' rx='3'/><path d='M15.5 5.800A2.5 2.5 0 0 0 13 4H6.500A2.5 2.5 0 0 0 4 6.500V13a2.5 2.5 0 0 0 1.8 2.4'/>",
        insert: "<path d='M12 4v10.500M7.8 10.500L12 14.700l4.2-4.200M4.5 16.500V18A2.5 2.5 0 0 0 7 20.500h10a2.5 2.5 0 0 0 2.5-2.500v-1.5'/>",
        history: "<path d='M4.3 9.500A8.2 8.2 0 1 1 3.8 12'/><path d='M3.5 5.200l.7 4.5 4.5-.6M12 7.800V12l3 2'/>",
        bookmark: "<path d='M6.5 6A2.5 2.5 0 0 1 9 3.500h6A2.5 2.5 0 0 1 17.5 6v14.200L12 16.300l-5.5 3.900z'/>",
        // navigation
        back: "<path d='M14.5 5.500L8 12l6.5 6.5'/>",
        fwd: "<path d='M9.5 5.500L16 12l-6.5 6.5'/>",
        down: "<path d='M5.5 9.500L12 16l6.5-6.5'/>",
        right: "<path d='M5 12h13.500M13 6.500l5.5 5.5-5.5 5.5'/>",
        restart: "<path d='M5 9.300A7.7 7.7 0 1 1 4.3 12'/><path d='M4.6 4.600v4.900h4.9'/>",
        more: "<circle cx='5.5' cy='12' r='1.6' fill='currentColor' stroke='none'/><circle cx='12' cy='12' r='1.6' fill='currentColor' stroke='none'/><circle cx='18.5' cy='12' r='1.6' fill='currentColor' stroke='none'/>",
        search: "<circle cx='10.8' cy='10.8' r='6.3'/><path d='M15.5 15.500l4.7 4.7'/>",
        gear: "<path d='M12 3.200l1.5 2.4 2.7-.6 1.1 2.5 2.7.6-.1 2.8 2.1 1.8-1.6 2.3.7 2.7-2.6 1-.8 2.6-2.8-.1-2 2-2.3-1.5-2.7.7-1-2.6-2.6-.8.1-2.8-2-1.9 1.6-2.3-.6-2.7 2.5-1 .9-2.6 2.8.2z' transform='translate(.6 -.4) scale(.95)'/><circle cx='12' cy='12' r='3'/>",
        sliders: "<path d='M4 7.500h8.500M17.5 7.500H20M4 16.500h2.500M11.5 16.500H20'/><circle cx='15' cy='7.5' r='2.5'/><circle cx='9' cy='16.5' r='2.5'/>",
        trash: "<path d='M4.5 6.500h15M9.5 6.300V5A1.5 1.5 0 0 1 11 3.500h2A1.5 1.5 0 0 1 14.5 5v1.300M6.5 6.800l.8 11.300a2.5 2.5 0 0 0 2.5 2.400h4.400a2.5 2.5 0 0 0 2.5-2.400l.8-11.300M10.3 11v5.500M13.7 11v5.5'/>",
        // status
        check: "<path d='M5 12.800l4.6 4.600L19 7.5'/>",
        checkCircleFill: "<circle cx='12' cy='12' r='9' fill='currentColor' stroke='none'/><path d='M8 12.300l2.8 2.800L16 9.6' stroke='#FFFFFF' stroke-width='2'/>",
        crossCircleFill: "<circle cx='12' cy='12' r='9' fill='currentColor' stroke='none'/><path d='M9 9l6 6M15 9l-6 6' stroke='#FFFFFF' stroke-width='2'/>",
        sealFill: "<path d='M12 2.600l2.4 1.9 3.1-.3.7 3 2.6 1.7-1.2 2.9 1.2 2.9-2.6 1.7-.7 3-3.1-.3L12 21l-2.4-1.9-3.1.3-.7-3-2.6-1.7 1.2-2.9-1.2-2.9 2.6-1.7.7-3 3.1.3z' fill='currentColor' stroke-width='1.2'/><path d='M8.3 12l2.6 2.600L15.8 9.6' stroke='#FFFFFF' stroke-width='2'/>",
        circle: "<circle cx='12' cy='12' r='8.5'/>",
        info: "<circle cx='12' cy='12' r='8.5'/><path d='M12 11.200v5'/><circle cx='12' cy='8' r='1.1' fill='currentColor' stroke='none'/>",
        warnFill: "<path d='M12 3.800L2.8 19.400h18.400z' fill='currentColor' stroke-width='2'/><path d='M12 9.500v4.500M12 16.800v.1' stroke='#FFFFFF' stroke-width='2'/>",
        blockFill: "<path d='M8.3 3h7.400L21 8.300v7.400L15.7 21H8.300L3 15.700V8.300z' fill='currentColor' stroke-width='1'/><path d='M12 7.500v5.500M12 16.300v.1' stroke='#FFFFFF' stroke-width='2'/>",
        // hub
        chat: "<path d='M4 7.500A3.5 3.5 0 0 1 7.5 4h9A3.5 3.5 0 0 1 20 7.500v6a3.5 3.5 0 0 1-3.5 3.500H12l-4.5 3.600V17A3.5 3.5 0 0 1 4 13.500z'/>",
        tasks: "<rect x='3.8' y='4' width='4.8' height='16' rx='1.8'/><rect x='10.6' y='4' width='4.8' height='10.5' rx='1.8'/><rect x='17.4' y='4' width='3.2' height='13' rx='1.6'/>",
        tracker: "<rect x='3.5' y='4' width='7' height='6' rx='2'/><rect x='13.5' y='14' width='7' height='6' rx='2'/><path d='M10.5 7H13a4 4 0 0 1 4 4v3'/>",
        grid: "<rect x='4' y='4' width='6.5' height='6.5' rx='2'/><rect x='13.5' y='4' width='6.5' height='6.5' rx='2'/><rect x='4' y='13.5' width='6.5' height='6.5' rx='2'/><rect x='13.5' y='13.5' width='6.5' height='6.5' rx='2'/>",
        gridFill: "<rect x='4' y='4' width='7' height='7' rx='2.2' fill='currentColor' stroke='none'/><rect x='13' y='4' width='7' height='7' rx='2.2' fill='currentColor' stroke='none'/><rect x='4' y='13' width='7' height='7' rx='2.2' fill='currentColor' stroke='none'/><rect x='13' y='13' width='7' height='7' rx='2.2' fill='currentColor' stroke='none'/>",
        columns: "<rect x='3.5' y='4.5' width='17' height='15' rx='3'/><path d='M9.2 4.500v15M14.8 4.500v15'/>",
        rows: "<rect x='3.5' y='4.5' width='17' height='15' rx='3'/><path d='M3.5 9.500h17M3.5 14.500h17'/>",
        cards: "<rect x='4' y='8' width='13' height='11' rx='2.5'/><path d='M8 5h9.500A2.5 2.5 0 0 1 20 7.500v8'/>",
        quiz: "<path d='M9 9.300a3 3 0 1 1 4.6 2.600c-1.1.7-1.6 1.3-1.6 2.6'/><circle cx='12' cy='17.6' r='1.1' fill='currentColor' stroke='none'/>",
        tube: "<path d='M4.5 6.500h3c5.5 0 3.5 11 9 11h3' stroke-width='3'/><circle cx='4.8' cy='6.5' r='2.3' fill='currentColor' stroke='none'/><circle cx='19.2' cy='17.5' r='2.3' fill='currentColor' stroke='none'/>",
        arrowCurve: "<path d='M4.5 17.500c1-6.5 5.5-10 13-9.8'/><path d='M13.8 3.900l4.7 3.8-4.3 4.3'/>",
        sticky: "<path d='M5 7.500A2.5 2.5 0 0 1 7.5 5h9A2.5 2.5 0 0 1 19 7.500v6L13.5 19h-6A2.5 2.5 0 0 1 5 16.500z'/><path d='M18.8 13.500H16a2.5 2.5 0 0 0-2.5 2.500v2.8'/>",
        marker: "<path d='M14.8 4.600l4.6 4.600L9.5 19.100l-5.3 1.2 1.1-5.300zM12.5 6.900l4.6 4.6'/>",
        zoomIn: "<circle cx='10.8' cy='10.8' r='6.3'/><path d='M15.5 15.500l4.7 4.700M10.8 8.300v5M8.3 10.800h5'/>",
        zoomOut: "<circle cx='10.8' cy='10.8' r='6.3'/><path d='M15.5 15.500l4.7 4.700M8.3 10.800h5'/>",
        minus: "<path d='M5.5 12h13'/>",
        frame: "<path d='M4 9V6.500A2.5 2.5 0 0 1 6.5 4H9M15 4h2.500A2.5 2.5 0 0 1 20 6.500V9M20 15v2.500a2.5 2.5 0 0 1-2.5 2.500H15M9 20H6.500A2.5 2.5 0 0 1 4 17.500V15'/><circle cx='12' cy='12' r='1.6' fill='currentColor' stroke='none'/>",
        ink: "<path d='M3.5 15.500c2-6 4.5-8.5 6-7s-3 7-1 8 4-7.5 6-6.5-1.5 5.5.5 6 3-1.5 5.5-3'/>",
        // settings
        user: "<circle cx='12' cy='8.3' r='4'/><path d='M4.5 20c.8-4 3.7-6 7.5-6s6.7 2 7.5 6'/>",
        userFill: "<circle cx='12' cy='8' r='4.3' fill='currentColor' stroke='none'/><path d='M4 20.300c.6-4.4 3.7-6.5 8-6.500s7.4 2.1 8 6.500z' fill='currentColor' stroke-width='1'/>",
        lock: "<rect x='5' y='10.5' width='14' height='10' rx='3'/><path d='M8.3 10.300V7.500a3.7 3.7 0 0 1 7.4 0v2.800M12 14.500v2.2'/>",
        lockFill: "<rect x='4.8' y='10.3' width='14.4' height='10.4' rx='3' fill='currentColor' stroke='none'/><path d='M8.3 10.300V7.500a3.7 3.7 0 0 1 7.4 0v2.8' stroke-width='2.2'/>",
        palette: "<path d='M12 3.800a8.2 8.2 0 1 0 0 16.400c1.6 0 2-1.1 1.5-2.2-.7-1.5.2-2.8 1.9-2.800h1.700a3.1 3.1 0 0 0 3.1-3.200C20 7.3 16.4 3.8 12 3.800z'/><circle cx='8.3' cy='10.5' r='1.2' fill='currentColor' stroke='none'/><circle cx='12' cy='7.8' r='1.2' fill='currentColor' stroke='none'/><circle cx='15.8' cy='10.3' r='1.2' fill='currentColor' stroke='none'/>",
        access: "<circle cx='12' cy='12' r='8.7'/><circle cx='12' cy='7.6' r='1.4' fill='currentColor' stroke='none'/><path d='M7.5 10.300c3 .9 6 .9 9 0M12 11v3l-2.2 4M12 14l2.2 4'/>",
        screen: "<rect x='3.3' y='4.5' width='17.4' height='12' rx='2.8'/><path d='M9 20h6M12 16.700V20'/>",
        mic: "<rect x='9' y='3.5' width='6' height='10.5' rx='3'/><path d='M5.8 11.500a6.2 6.2 0 0 0 12.4 0M12 17.900v2.6'/>",
        signOut: "<path d='M10 4.500H7A2.5 2.5 0 0 0 4.5 7v10A2.5 2.5 0 0 0 7 19.500h3M10.5 12h9.300M16 8l4 4-4 4'/>",
        sun: "<circle cx='12' cy='12' r='3.8'/><path d='M12 3v2M12 19v2M3 12h2M19 12h2M5.6 5.600L7 7M17 17l1.4 1.400M18.4 5.600L17 7M7 17l-1.4 1.4'/>",
        moon: "<path d='M19.8 14.300A8.3 8.3 0 0 1 9.7 4.200a8.3 8.3 0 1 0 10.1 10.100z'/>",
        globe: "<circle cx='12' cy='12' r='8.5'/><path d='M3.8 12h16.400M12 3.500c2.4 2.3 3.5 5.1 3.5 8.500s-1.1 6.2-3.5 8.500c-2.4-2.3-3.5-5.1-3.5-8.500S9.6 5.8 12 3.500z'/>",
        key: "<circle cx='8' cy='15.5' r='4'/><path d='M11 12.600l8-8M16 7.500l2.5 2.500M13.5 10l1.8 1.8'/>",
        help: "<path d='M9 9.300a3 3 0 1 1 4.6 2.600c-1.1.7-1.6 1.3-1.6 2.6'/><circle cx='12' cy='17.6' r='1.1' fill='currentColor' stroke='none'/>",
        // task column symbols (solid)
        flameFill: "<path d='M12.6 2.800c.6 3.3-3.9 5.4-5.6 8.8-2 4.1.6 9.3 5.2 9.3 4.5 0 7-3.7 6.3-7.6-.5-2.8-2.5-4-2.8-6.4-1.2.9-1.6 2-1.5 3.3-1.6-1.5-.4-4.7-1.6-7.400z' fill='currentColor' stroke-width='1'/>",
        starFill: "<path d='M12 3.300l2.6 5.5 6 .8-4.4 4.2 1.1 6L12 16.900l-5.3 2.9 1.1-6L3.4 9.600l6-.8z' fill='currentColor' stroke-width='1.4'/>",
        clockFill: "<circle cx='12' cy='12' r='9' fill='currentColor' stroke='none'/><path d='M12 7v5.200l3.2 2' stroke='#FFFFFF' stroke-width='2'/>",
        trayFill: "<path d='M5.8 5.500h12.400L21 13v4.500a2 2 0 0 1-2 2H5a2 2 0 0 1-2-2V13z' fill='currentColor' stroke-width='1'/><path d='M4.5 13.300h4.300c.3 1.7 1.5 2.7 3.2 2.700s2.9-1 3.2-2.700h4.3' stroke='#FFFFFF' stroke-width='1.6'/>",
        flagFill: "<path d='M6 21V4' /><path d='M6 4.500c4-2.2 7 2 12.5 0v9c-5.5 2-8.5-2.2-12.5 0z' fill='currentColor'/>",
        targetIcon: "<circle cx='12' cy='12' r='8.5'/><circle cx='12' cy='12' r='4.5'/><circle cx='12' cy='12' r='1.3' fill='currentColor' stroke='none'/>",
        brainFill: "<path d='M11.2 5.200A3 3 0 0 0 6.3 7 3.3 3.3 0 0 0 4 10.300c0 1 .4 1.8 1 2.400A3.4 3.4 0 0 0 7 18.200a2.7 2.7 0 0 0 4.2.8zM12.8 5.200A3 3 0 0 1 17.7 7a3.3 3.3 0 0 1 2.3 3.300c0 1-.4 1.8-1 2.400a3.4 3.4 0 0 1-2 5.5 2.7 2.7 0 0 1-4.2.8z' fill='currentColor' stroke-width='1'/>",
        calendar: "<rect x='3.8' y='5' width='16.4' height='15.2' rx='3'/><path d='M4 10h16M8.3 3.300v3.200M15.7 3.300v3.2'/>",
        sunFill: "<circle cx='12' cy='12' r='4.3' fill='currentColor' stroke='none'/><path d='M12 2.800v2M12 19.200v2M2.8 12h2M19.2 12h2M5.5 5.500l1.4 1.400M17.1 17.100l1.4 1.400M18.5 5.500l-1.4 1.400M6.9 17.100l-1.4 1.4' stroke-width='2'/>",
        sunriseFill: "<path d='M6.5 17a5.5 5.5 0 0 1 11 0z' fill='currentColor'/><path d='M3 20.300h18M12 4v4M9.8 6L12 3.8 14.2 6M4.5 11.500l1.3 1.200M19.5 11.500l-1.3 1.2'/>",
        moonFill: "<path d='M19.8 14.300A8.3 8.3 0 0 1 9.7 4.200a8.3 8.3 0 1 0 10.1 10.100z' fill='currentColor'/>",
        houseFill: "<path d='M3.8 11.300L12 4l8.2 7.300V18a2 2 0 0 1-2 2H14.500v-5h-5v5H5.800a2 2 0 0 1-2-2z' fill='currentColor' stroke-width='1.2'/>",
        caseFill: "<rect x='3' y='7.5' width='18' height='12.5' rx='2.8' fill='currentColor' stroke='none'/><path d='M8.8 7.300V6A1.7 1.7 0 0 1 10.5 4.300h3A1.7 1.7 0 0 1 15.2 6v1.3'/><path d='M3.5 13h17' stroke='#FFFFFF' stroke-width='1.4'/>",
        bookFill: "<path d='M11.4 6.300C9.5 5 7 4.4 3.8 4.500v13.300c3.2-.1 5.7.5 7.6 1.800zM12.6 6.300c1.9-1.3 4.4-1.9 7.6-1.800v13.300c-3.2-.1-5.7.5-7.6 1.800z' fill='currentColor' stroke-width='1'/>",
        pencil: "<path d='M15.5 4.800l3.7 3.700L8.5 19.200l-4.7 1 1-4.700zM13 7.300l3.7 3.7'/>",
        cartFill: "<path d='M2.8 4.200h2.400l.7 2.800h14.300l-1.7 7.800H7.700L5.5 5' fill='currentColor' fill-rule='nonzero'/><circle cx='9' cy='19' r='1.8' fill='currentColor' stroke='none'/><circle cx='17' cy='19' r='1.8' fill='currentColor' stroke='none'/>",
        heartFill: "<path d='M12 20S3.5 15.2 3.5 9.300A4.5 4.5 0 0 1 12 7.400a4.5 4.5 0 0 1 8.5 1.900C20.5 15.2 12 20 12 20z' fill='currentColor'/>",
        run: "<circle cx='14.8' cy='4.6' r='1.9' fill='currentColor' stroke='none'/><path d='M6.5 10.500l3.5-2.5 4 1.5-2.5 5 3.5 2.5.5 4M11.5 14.500L9 18H4.500M14 9.500l1.8 2.5 3.2.5' stroke-width='2'/>",
        dumbbellFill: "<rect x='5' y='6.5' width='4' height='11' rx='1.6' fill='currentColor' stroke='none'/><rect x='15' y='6.5' width='4' height='11' rx='1.6' fill='currentColor' stroke='none'/><path d='M9 12h6M2.8 10v4M21.2 10v4' stroke-width='2.2'/>",
        coinFill: "<circle cx='12' cy='12' r='9' fill='currentColor' stroke='none'/><path d='M14.8 9c-.5-1-1.5-1.5-2.8-1.5-1.6 0-2.8.8-2.8 2.1 0 3 5.7 1.5 5.7 4.6 0 1.4-1.3 2.3-2.9 2.3-1.5 0-2.6-.6-3.1-1.700M12 5.800v12.4' stroke='#FFFFFF' stroke-width='1.6'/>",
        cardFill: "<rect x='2.8' y='5.5' width='18.4' height='13' rx='2.8' fill='currentColor' stroke='none'/><path d='M3 10h18' stroke='#FFFFFF' stroke-width='2'/>",
        peopleFill: "<circle cx='9' cy='8.5' r='3.5' fill='currentColor' stroke='none'/><path d='M2.5 19c.5-3.8 2.9-5.5 6.5-5.500s6 1.7 6.5 5.500z' fill='currentColor' stroke-width='.8'/><path d='M15.5 5.400a3.3 3.3 0 0 1 0 6.300M17.5 14c2.2.6 3.5 2.2 3.9 4.7' stroke-width='2'/>",
        phoneFill: "<path d='M6 3.800l3 .2 1.5 4.2-1.9 1.700c.9 2.4 2.9 4.4 5.5 5.500l1.7-1.9 4.2 1.5.2 3c-.3 1.3-1.4 2.2-2.8 2C10.2 19.2 4.8 13.8 4 6.600c-.2-1.4.7-2.5 2-2.800z' fill='currentColor' stroke-width='1'/>",
        bugFill: "<path d='M12 7.500c3.3 0 5.5 2.7 5.5 6.300S15.3 20.5 12 20.500s-5.5-3.1-5.5-6.700S8.7 7.5 12 7.500z' fill='currentColor' stroke-width='1'/><path d='M9 6.800a3 3 0 0 1 6 0M3.8 9.500l3 1.500M20.2 9.500l-3 1.500M3.3 14.500h3.200M17.5 14.500h3.200M4.5 19.500l2.7-1.700M19.5 19.500l-2.7-1.7'/><path d='M12 8.500v11.5' stroke='#FFFFFF' stroke-width='1.3'/>",
        wrenchFill: "<path d='M20 7.200l-3.1 3.1-2.9-.7-.7-2.900L16.4 3.600a5 5 0 0 0-6.3 6.500L3.8 16.400a2.7 2.7 0 0 0 3.8 3.800l6.3-6.300A5 5 0 0 0 20 7.200z' fill='currentColor' stroke-width='1'/>",
        pauseFill: "<circle cx='12' cy='12' r='9' fill='currentColor' stroke='none'/><path d='M9.8 8.500v7M14.2 8.500v7' stroke='#FFFFFF' stroke-width='2.2'/>",
        squareFill: "<rect x='4.5' y='4.5' width='15' height='15' rx='4' fill='currentColor' stroke='none'/>",
        square: "<rect x='4.5' y='4.5' width='15' height='15' rx='4'/>",
        checkSquareFill: "<rect x='3.8' y='3.8' width='16.4' height='16.4' rx='4.5' fill='currentColor' stroke='none'/><path d='M8 12.300l2.8 2.800L16 9.6' stroke='#FFFFFF' stroke-width='2'/>"
    })
}
