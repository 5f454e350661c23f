// The lanes of the memory map: what stands in each, how it is called and where it leads.

const MEMORY_HUES = {code: 205, data: 150};

function mapLanes() {
    const inner = model.data.blocks.filter((block) => block.kind !== "function" && block.size > 0 &&
                                                      block.address < model.space).sort(byAddress);
    const ofModule = (item) => hue(item.module ?? 0);
    return [
        {title: "Image", items: model.data.code, hue: (item) => MEMORY_HUES[item.memory] ?? 40,
         text: (item) => item.memory, link: (item) => "#address/" + hex(item.address)},
        {title: "Modules", items: model.data.ranges, hue: ofModule,
         text: (item) => moduleName(item.module), link: (item) => "#module/" + item.module},
        {title: "Functions", items: model.functions.filter((block) => block.size > 0 &&
                                                           block.address < model.space),
         hue: ofModule, text: functionName, link: (item) => "#function/" + item.record},
        {title: "Blocks", items: inner, hue: ofModule, text: () => "",
         link: (item) => "#address/" + hex(item.address), nested: true},
        {title: "Variables", items: model.variables, hue: ofModule,
         text: (item) => shown(item.name), link: (item) => "#symbol/" + item.record},
    ];
}
